#include "FileDescriptor.h"
#include "FileTree_p.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/xattr.h>

#include <algorithm>
#include <cstring>
#include <tuple>

namespace FileTree::Native {

namespace {

// Short enough for a report of the progress between two of them on a slow disk.
constexpr qint64 chunkSize = 1 << 20;

/// Repeats a call for as long as signals interrupt it.
template <class Call>
ssize_t uninterrupted(const Call &call)
{
    for (;;) {
        const ssize_t result = call();
        if (result >= 0 || errno != EINTR)
            return result;
    }
}

int copyThroughMemory(int from, int to, qint64 size, const Advance &advance)
{
    QByteArray buffer(qsizetype(std::min(size, chunkSize)), Qt::Uninitialized);
    for (ssize_t got = 0; size > 0; size -= got) {
        const size_t wanted = size_t(std::min<qint64>(size, buffer.size()));
        got = uninterrupted([&] { return ::read(from, buffer.data(), wanted); });
        if (got <= 0)
            return got == 0 ? 0 : errno;
        for (ssize_t put = 0, written = 0; put < got; put += written) {
            written = uninterrupted(
                [&] { return ::write(to, buffer.constData() + put, size_t(got - put)); });
            if (written < 0)
                return errno;
        }
        if (!advance(got))
            return ECANCELED;
    }
    return 0;
}

/// From where both files stand.
int copyBytes(int from, int to, qint64 size, const Advance &advance)
{
    while (size > 0) {
        const ssize_t copied = uninterrupted([&] {
            return ::copy_file_range(from, nullptr, to, nullptr, size_t(std::min(size, chunkSize)),
                                     0);
        });
        if (copied <= 0) // not between these two file systems, or an error that shows again
            return copyThroughMemory(from, to, size, advance);
        size -= copied;
        if (!advance(copied))
            return ECANCELED;
    }
    return 0;
}

/// From one stretch of data to the next. A file system that does not tell them has one stretch.
int copyStretches(int from, int to, qint64 size, const Advance &advance)
{
    for (qint64 at = 0; at < size;) {
        qint64 start = ::lseek(from, at, SEEK_DATA);
        if (start < 0 && errno != ENXIO && errno != EINVAL)
            return errno;
        if (start < 0)
            start = errno == ENXIO ? size : at; // no more data, or no telling
        start = std::min(start, size);
        qint64 end = start < size ? ::lseek(from, start, SEEK_HOLE) : size;
        if (end < 0 && errno != EINVAL)
            return errno;
        end = end < 0 ? size : std::min(end, size);
        if (start > at && !advance(start - at))
            return ECANCELED;
        if (start < end && (::lseek(from, start, SEEK_SET) < 0 || ::lseek(to, start, SEEK_SET) < 0))
            return errno;
        if (const int error = copyBytes(from, to, end - start, advance))
            return error;
        at = end;
    }
    return ::ftruncate(to, size) == 0 ? 0 : errno;
}

int copyContent(int from, const struct stat &status, int to, const Advance &advance)
{
    if (::ioctl(to, FICLONE, from) == 0)
        return advance(status.st_size) ? 0 : ECANCELED;
    const bool hasHoles = status.st_blocks * 512 < status.st_size;
    return hasHoles ? copyStretches(from, to, status.st_size, advance)
                    : copyBytes(from, to, status.st_size, advance);
}

/// Errors that say no more than that this file system keeps no such thing, or not for this user.
bool isUnsupported(int error)
{
    return error == ENOTSUP || error == EPERM || error == EACCES || error == EINVAL ||
           error == ENOSYS;
}

/// The names, each with its null, however the list grows meanwhile.
int listExtendedAttributes(int file, QByteArray *names)
{
    for (;;) {
        const ssize_t length = ::flistxattr(file, nullptr, 0);
        if (length <= 0)
            return length == 0 ? 0 : errno;
        names->resize(length);
        const ssize_t got = ::flistxattr(file, names->data(), size_t(length));
        if (got < 0 && errno != ERANGE)
            return errno;
        if (got >= 0) {
            names->truncate(got);
            return 0;
        }
    }
}

int copyAttributes(int from, const struct stat &status, int to)
{
    const mode_t mode = keepOwner(to, status);
    // Before the mode, which may forbid them; the mode keeps an access list as it is.
    if (const int error = copyExtendedAttributes(from, to))
        return error;
    if (::fchmod(to, mode) != 0 && !isUnsupported(errno))
        return errno;
    const timespec times[] = {status.st_atim, status.st_mtim};
    return ::futimens(to, times) == 0 || isUnsupported(errno) ? 0 : errno;
}

int renamed(const Place &from, const Place &to, unsigned flags)
{
    const bool done =
        ::renameat2(from.folder, from.name.constData(), to.folder, to.name.constData(), flags) == 0;
    return done ? 0 : errno;
}

} // namespace

Stamp stampOf(const struct stat &status)
{
    const auto nanoseconds = [](const timespec &time) {
        return qint64(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
    };
    return {status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtim),
            nanoseconds(status.st_ctim)};
}

int copyExtendedAttributes(int from, int to)
{
    QByteArray names;
    if (const int error = listExtendedAttributes(from, &names))
        return error == ENOTSUP ? 0 : error;
    if (names.isEmpty())
        return 0;
    QByteArray value(XATTR_SIZE_MAX, Qt::Uninitialized);
    for (qsizetype start = 0; start < names.size(); start = names.indexOf('\0', start) + 1) {
        const char *name = names.constData() + start;
        const ssize_t size = ::fgetxattr(from, name, value.data(), size_t(value.size()));
        if (size >= 0 && ::fsetxattr(to, name, value.constData(), size_t(size), 0) == 0)
            continue;
        const bool isTheUsers = std::strncmp(name, "user.", 5) == 0;
        if (errno != ENODATA && errno != ENOTSUP && (isTheUsers || !isUnsupported(errno)))
            return errno;
    }
    return 0;
}

int renameNoReplace(const Place &from, const Place &to)
{
    return renamed(from, to, RENAME_NOREPLACE);
}

int exchange(const Place &one, const Place &other)
{
    return renamed(one, other, RENAME_EXCHANGE);
}

int copyFile(int from, const struct stat &status, const Place &to, const Advance &advance)
{
    FileDescriptor copy(::openat(to.folder, to.name.constData(),
                                 O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                                 S_IRUSR | S_IWUSR));
    if (!copy)
        return errno;
    if (const int error = copyContent(from, status, copy.get(), advance))
        return error;
    if (const int error = copyAttributes(from, status, copy.get()))
        return error;
    return copy.close();
}

int copyFolderAttributes(int from, const struct stat &status, int to)
{
    return copyAttributes(from, status, to);
}

int copyLinkAttributes(const struct stat &status, const Place &to)
{
    const char *name = to.name.constData();
    // Only root may give it away, and nobody else needs to.
    std::ignore = ::fchownat(to.folder, name, status.st_uid, status.st_gid, AT_SYMLINK_NOFOLLOW);
    const timespec times[] = {status.st_atim, status.st_mtim};
    const bool done = ::utimensat(to.folder, name, times, AT_SYMLINK_NOFOLLOW) == 0;
    return done || isUnsupported(errno) ? 0 : errno;
}

int dropInheritance(int folder)
{
    if (::fchmod(folder, S_IRWXU) != 0 && !isUnsupported(errno)) // the group's bit
        return errno;
    for (const char *list : {"system.posix_acl_default", "system.posix_acl_access"}) {
        if (::fremovexattr(folder, list) != 0 && errno != ENODATA && !isUnsupported(errno))
            return errno;
    }
    return 0;
}

int flushFileSystem(int folder)
{
    // One journal commit for the whole tree instead of one for each of its files.
    return ::syncfs(folder) == 0 ? 0 : errno;
}

int flushFile(int file)
{
    // A file system that cannot flush a folder says EINVAL.
    return ::fsync(file) == 0 || errno == EINVAL ? 0 : errno;
}

} // namespace FileTree::Native
