#include "FileDescriptor.h"
#include "FileTree_p.h"

#include <copyfile.h>
#include <fcntl.h>
#include <stdio.h> // NOLINT(modernize-deprecated-headers): renameatx_np
#include <sys/acl.h>
#include <sys/clonefile.h>

#include <memory>
#include <tuple>

namespace FileTree::Native {

namespace {

/// What copyfile tells while it copies the content of one file.
struct Report
{
    const Advance &advance;
    off_t done = 0;
};

int reportContent(int what, int stage, copyfile_state_t state, const char *, const char *,
                  void *context)
{
    if (what != COPYFILE_COPY_DATA || stage != COPYFILE_PROGRESS)
        return COPYFILE_CONTINUE;
    auto *report = static_cast<Report *>(context);
    off_t done = 0;
    ::copyfile_state_get(state, COPYFILE_STATE_COPIED, &done);
    const qint64 more = done - std::exchange(report->done, done);
    return report->advance(more) ? COPYFILE_CONTINUE : COPYFILE_QUIT;
}

int copyContentAndAttributes(int from, int to, const Advance &advance)
{
    const std::unique_ptr<std::remove_pointer_t<copyfile_state_t>, int (*)(copyfile_state_t)> state(
        ::copyfile_state_alloc(), ::copyfile_state_free);
    Report report = {advance};
    const void *callback = reinterpret_cast<const void *>(&reportContent);
    ::copyfile_state_set(state.get(), COPYFILE_STATE_STATUS_CB, callback);
    ::copyfile_state_set(state.get(), COPYFILE_STATE_STATUS_CTX, &report);
    return ::fcopyfile(from, to, state.get(), COPYFILE_ALL) == 0 ? 0 : errno;
}

} // namespace

int renameNoReplace(const Place &from, const Place &to)
{
    const bool done = ::renameatx_np(from.folder, from.name.constData(), to.folder,
                                     to.name.constData(), RENAME_EXCL) == 0;
    return done ? 0 : errno;
}

int copyFile(int from, const struct stat &status, const Place &to, const Advance &advance)
{
    if (::fclonefileat(from, to.folder, to.name.constData(), 0) == 0)
        return advance(status.st_size) ? 0 : ECANCELED;
    FileDescriptor copy(::openat(to.folder, to.name.constData(),
                                 O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                                 S_IRUSR | S_IWUSR));
    if (!copy)
        return errno;
    if (const int error = copyContentAndAttributes(from, copy.get(), advance))
        return error;
    return copy.close();
}

int copyExtendedAttributes(int from, int to)
{
    return ::fcopyfile(from, to, nullptr, COPYFILE_XATTR | COPYFILE_ACL) == 0 ? 0 : errno;
}

int copyFolderAttributes(int from, const struct stat &, int to)
{
    return ::fcopyfile(from, to, nullptr, COPYFILE_METADATA) == 0 ? 0 : errno;
}

int copyLinkAttributes(const struct stat &status, const Place &to)
{
    const char *name = to.name.constData();
    // Only root may give it away, and nobody else needs to.
    std::ignore = ::fchownat(to.folder, name, status.st_uid, status.st_gid, AT_SYMLINK_NOFOLLOW);
    const timespec times[] = {status.st_atimespec, status.st_mtimespec};
    return ::utimensat(to.folder, name, times, AT_SYMLINK_NOFOLLOW) == 0 ? 0 : errno;
}

void dropInheritance(int folder)
{
    ::fchmod(folder, S_IRWXU);
    const std::unique_ptr<std::remove_pointer_t<acl_t>, int (*)(void *)> none(::acl_init(0),
                                                                              ::acl_free);
    ::acl_set_fd(folder, none.get());
}

int flushFileSystem(int folder)
{
    if (::fsync_volume_np(folder, SYNC_VOLUME_FULLSYNC | SYNC_VOLUME_WAIT) == 0)
        return 0;
    if (errno != ENOTSUP)
        return errno;
    ::sync(); // all that a volume on the network offers
    return 0;
}

int flushFolder(int folder)
{
    // fsync alone stops at the drive's own memory.
    return ::fcntl(folder, F_FULLFSYNC) != -1 || ::fsync(folder) == 0 ? 0 : errno;
}

} // namespace FileTree::Native
