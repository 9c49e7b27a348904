#include "FileDescriptor.h"
#include "FileTree_p.h"
#include "Leftovers.h"
#include "TreeListing.h"

#include <QFile>

#include <fcntl.h>

#include <tuple>

using namespace Qt::StringLiterals;

namespace FileTree {

namespace {

bool stands(const Stamp &item, const Place &place)
{
    return presence(item, place) == Presence::There;
}

/// For a disk without second names. A new file of ours takes the name, which makes others fail, and
/// is replaced as long as nobody has written to it.
int renameOverEmptyFile(const Stamp &item, const Place &from, const Place &to)
{
    const char *target = to.name.constData();
    const auto isEmpty = [&to, target] {
        struct stat status = {};
        return ::fstatat(to.folder, target, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
               S_ISREG(status.st_mode) && status.st_size == 0;
    };
    FileDescriptor empty(::openat(to.folder, target,
                                  O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                                  S_IRUSR | S_IWUSR));
    if (!empty && errno == EEXIST)
        return EEXIST;
    int error = empty ? empty.close() : errno; // some disks replace no file that is open
    if (error == 0 && !isEmpty())
        error = EEXIST;
    if (error == 0 && ::renameat(from.folder, from.name.constData(), to.folder, target) != 0)
        error = errno;
    if (error != 0 && presence(item, to) == Presence::NotThere && isEmpty())
        std::ignore = ::unlinkat(to.folder, target, 0);
    return error;
}

/// For a file system that cannot refuse to replace. A folder replaces an empty one that is made
/// for it, anything else gets a second name and then loses the first: whatever somebody else puts
/// at the destination meanwhile makes these fail.
int renameByReservation(const Stamp &item, bool isFolder, const Place &from, const Place &to)
{
    const char *source = from.name.constData();
    const char *target = to.name.constData();
    if (isFolder) {
        if (::mkdirat(to.folder, target, S_IRWXU) != 0) {
            const int error = errno;
            if (error != EEXIST) // it may be there all the same
                std::ignore = ::unlinkat(to.folder, target, AT_REMOVEDIR);
            return error;
        }
        if (::renameat(from.folder, source, to.folder, target) == 0)
            return 0;
    } else {
        const int error = ::linkat(from.folder, source, to.folder, target, 0) == 0 ? 0 : errno;
        if (error == EPERM || error == ENOTSUP || error == ENOSYS)
            return renameOverEmptyFile(item, from, to);
        if (error == EEXIST || (error != 0 && !stands(item, to)))
            return error;
        if (::unlinkat(from.folder, source, 0) == 0)
            return 0;
    }
    // Of two names one goes only when the other is seen to be there.
    const int error = errno;
    if (stands(item, from) && stands(item, to) != isFolder)
        std::ignore = ::unlinkat(to.folder, target, isFolder ? AT_REMOVEDIR : 0);
    return error;
}

Result<bool> isListed(const Place &place)
{
    bool isThere = false;
    const int error = readFolder(place.folder, [&](const QByteArray &name) {
        isThere = isThere || name == place.name;
        return 0;
    });
    if (error != 0)
        return failure(u"cannot read a folder"_s, error);
    return isThere;
}

/// Whether the name that seems taken is the item's own in other letters.
bool isOtherLetterCase(const Stamp &item, const Place &from, const Place &to)
{
    Stamp here;
    Stamp there;
    const bool isOneFolder = stampAt({from.folder, "."}, &here) == 0 &&
                             stampAt({to.folder, "."}, &there) == 0 && here.isSameItem(there);
    if (!isOneFolder || !stands(item, to) ||
        QFile::decodeName(from.name).compare(QFile::decodeName(to.name), Qt::CaseInsensitive) != 0)
        return false;
    const Result<bool> taken = isListed(to); // by a second name of the same file
    return taken && !*taken;
}

int renameLetterCase(const Place &from, const Place &to)
{
    int error = 0;
    if (::renameat(from.folder, from.name.constData(), to.folder, to.name.constData()) != 0)
        error = errno;
    const Result<bool> done = isListed(to);
    if (error != 0 || !done || *done)
        return done && *done ? 0 : error;
    // Some systems take both names for one file, for which there is nothing to do.
    const Place aside = {from.folder, asideName()};
    error = Native::renameNoReplace(from, aside);
    if (error == 0)
        error = Native::renameNoReplace(aside, to);
    if (error != 0)
        std::ignore = Native::renameNoReplace(aside, from);
    return error;
}

} // namespace

int stampAt(const Place &place, Stamp *stamp)
{
    struct stat status = {};
    if (::fstatat(place.folder, place.name.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return errno;
    *stamp = Native::stampOf(status);
    return 0;
}

Presence presence(const Stamp &item, const Place &place)
{
    Stamp found;
    const int error = stampAt(place, &found);
    if (error == 0 && found.isSameItem(item))
        return Presence::There;
    return error == 0 || error == ENOENT ? Presence::NotThere : Presence::Unknown;
}

Result<bool> liesInside(int folder, const Place &item)
{
    struct stat outer = {};
    struct stat here = {};
    struct stat below = {};
    if (::fstatat(item.folder, item.name.constData(), &outer, AT_SYMLINK_NOFOLLOW) != 0)
        return failure(u"cannot find the source"_s, errno);
    // Folders are told by their identity, up to the root, which is its own parent.
    for (QByteArray way = "."; S_ISDIR(outer.st_mode); way += "/..") {
        if (::fstatat(folder, way.constData(), &here, 0) != 0)
            return failure(u"cannot tell where the destination lies"_s, errno);
        if (here.st_dev == outer.st_dev && here.st_ino == outer.st_ino)
            return true;
        if (here.st_dev == below.st_dev && here.st_ino == below.st_ino)
            break;
        below = here;
    }
    return false;
}

int renameExclusively(const Place &from, const Place &to)
{
    struct stat status = {};
    if (::fstatat(from.folder, from.name.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return errno;
    const Stamp item = Native::stampOf(status);
    int error = Native::renameNoReplace(from, to);
    if (error == EINVAL || error == ENOTSUP || error == ENOSYS) {
        // EINVAL also says that the destination lies inside the source.
        const Result<bool> inside = liesInside(to.folder, from);
        if (inside && !*inside)
            error = renameByReservation(item, S_ISDIR(status.st_mode), from, to);
    }
    if (error == EEXIST && isOtherLetterCase(item, from, to))
        error = renameLetterCase(from, to);
    if (error != 0 && error != EXDEV && stands(item, to) &&
        presence(item, from) == Presence::NotThere)
        return 0;
    return error;
}

} // namespace FileTree
