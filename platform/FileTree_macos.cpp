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
    // Whole where the volume cannot keep holes.
    return ::fcopyfile(from, to, state.get(), COPYFILE_ALL | COPYFILE_DATA_SPARSE) == 0 ? 0 : errno;
}

/// A locked copy could be neither renamed into its place nor removed again.
int unlock(const struct stat &status, int copy)
{
    constexpr unsigned locks = UF_IMMUTABLE | UF_APPEND;
    return (status.st_flags & locks) == 0 || ::fchflags(copy, status.st_flags & ~locks) == 0
               ? 0
               : errno;
}

/// What a volume says that has not, or knows nothing of, what it was asked for.
bool isUnsupported(int error)
{
    return error == ENOTSUP || error == EOPNOTSUPP || error == EINVAL || error == ENOSYS ||
           error == ENOTTY;
}

int renamed(const Place &from, const Place &to, unsigned flags)
{
    const bool done = ::renameatx_np(from.folder, from.name.constData(), to.folder,
                                     to.name.constData(), flags) == 0;
    return done ? 0 : errno;
}

} // namespace

int renameNoReplace(const Place &from, const Place &to)
{
    return renamed(from, to, RENAME_EXCL);
}

int exchange(const Place &one, const Place &other)
{
    return renamed(one, other, RENAME_SWAP);
}

Stamp stampOf(const struct stat &status)
{
    const auto nanoseconds = [](const timespec &time) {
        return qint64(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
    };
    return {status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtimespec),
            nanoseconds(status.st_ctimespec)};
}

int copyFile(int from, const struct stat &status, const Place &to, const Advance &advance)
{
    const bool isLocked = (status.st_flags & (UF_IMMUTABLE | UF_APPEND)) != 0;
    if (!isLocked && ::fclonefileat(from, to.folder, to.name.constData(), CLONE_ACL) == 0)
        return advance(status.st_size) ? 0 : ECANCELED;
    FileDescriptor copy(::openat(to.folder, to.name.constData(),
                                 O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                                 S_IRUSR | S_IWUSR));
    if (!copy)
        return errno;
    const int error = copyContentAndAttributes(from, copy.get(), advance);
    const int locked = unlock(status, copy.get()); // also what is half a copy
    if (error != 0 || locked != 0)
        return error != 0 ? error : locked;
    return copy.close();
}

int copyExtendedAttributes(int from, int to)
{
    return ::fcopyfile(from, to, nullptr, COPYFILE_XATTR | COPYFILE_ACL) == 0 ? 0 : errno;
}

int copyFolderAttributes(int from, const struct stat &status, int to)
{
    const int error = ::fcopyfile(from, to, nullptr, COPYFILE_METADATA) == 0 ? 0 : errno;
    const int locked = unlock(status, to);
    return error != 0 ? error : locked;
}

int copyLinkAttributes(const struct stat &status, const Place &to)
{
    const char *name = to.name.constData();
    // Only root may give it away, and nobody else needs to.
    std::ignore = ::fchownat(to.folder, name, status.st_uid, status.st_gid, AT_SYMLINK_NOFOLLOW);
    const timespec times[] = {status.st_atimespec, status.st_mtimespec};
    return ::utimensat(to.folder, name, times, AT_SYMLINK_NOFOLLOW) == 0 ? 0 : errno;
}

int dropInheritance(int folder)
{
    if (::fchmod(folder, S_IRWXU) != 0)
        return errno;
    const std::unique_ptr<std::remove_pointer_t<acl_t>, int (*)(void *)> none(::acl_init(0),
                                                                              ::acl_free);
    return none && (::acl_set_fd(folder, none.get()) == 0 || isUnsupported(errno)) ? 0 : errno;
}

int flushFileSystem(int folder)
{
    if (::fsync_volume_np(folder, SYNC_VOLUME_FULLSYNC | SYNC_VOLUME_WAIT) == 0)
        return 0;
    if (!isUnsupported(errno))
        return errno;
    ::sync(); // all that a volume on the network offers
    return 0;
}

int flushFile(int file)
{
    // fsync alone stops at the drive's own memory. A volume that cannot flush a folder says so.
    if (::fcntl(file, F_FULLFSYNC) != -1)
        return 0;
    if (!isUnsupported(errno))
        return errno;
    return ::fsync(file) == 0 || isUnsupported(errno) ? 0 : errno;
}

} // namespace FileTree::Native
