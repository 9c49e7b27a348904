#include "FileTree.h"

#include "FileDescriptor.h"
#include "FileTree_p.h"
#include "Path.h"
#include "TreeCopy.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <fcntl.h>

#include <chrono>
#include <future>
#include <system_error>
#include <tuple>

using namespace Qt::StringLiterals;

namespace FileTree {

namespace {

/// An item's name and its folder, open.
struct OpenItem
{
    FileDescriptor folder;
    Place place;
};

/// The bytes of a path that are the same text when read again.
bool isEncodable(const QString &text)
{
    return text.isValidUtf16() && !text.contains(QChar::Null);
}

bool isName(const QString &name)
{
    return !name.isEmpty() && name != u"." && name != u".." && !name.contains(u'/') &&
           isEncodable(name);
}

Result<OpenItem> open(const Item &item)
{
    const QString folder = Path::expandingTilde(item.folder);
    if (!isName(item.name) || !folder.startsWith(u'/') || !isEncodable(folder))
        return Failure{u"no item: \"%1\" in \"%2\""_s.arg(item.name, item.folder)};
    OpenItem opened;
    opened.folder = FileDescriptor(
        ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened.folder)
        return Native::failure(u"cannot open "_s + folder, errno);
    opened.place = {opened.folder.get(), QFile::encodeName(item.name)};
    return opened;
}

Outcome outcome(const QString &what, int error)
{
    if (error != 0)
        return Native::failure(what, error);
    return {};
}

/// Whether an open folder is the item or lies below it. Links on the way to the folder do not
/// hide that: folders are told by their identity, up to the root, which is its own parent.
Result<bool> liesInside(int folder, const Place &item)
{
    struct stat outer = {};
    struct stat here = {};
    struct stat below = {};
    if (::fstatat(item.folder, item.name.constData(), &outer, AT_SYMLINK_NOFOLLOW) != 0)
        return Native::failure(u"cannot find the source"_s, errno);
    for (QByteArray way = "."; S_ISDIR(outer.st_mode); way += "/..") {
        if (::fstatat(folder, way.constData(), &here, 0) != 0)
            return Native::failure(u"cannot tell where the destination lies"_s, errno);
        if (here.st_dev == outer.st_dev && here.st_ino == outer.st_ino)
            return true;
        if (here.st_dev == below.st_dev && here.st_ino == below.st_ino)
            break;
        below = here;
    }
    return false;
}

/// For a file system that cannot refuse to replace. A folder replaces an empty one that is made
/// for it, anything else gets a second name and then loses the first: whatever somebody else puts
/// at the destination meanwhile makes these fail. Where they are impossible too, nothing is done.
int renameByReservation(const Place &from, const Place &to)
{
    const char *source = from.name.constData();
    const char *target = to.name.constData();
    struct stat status = {};
    if (::fstatat(from.folder, source, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return errno;
    const bool isFolder = S_ISDIR(status.st_mode);
    if ((isFolder ? ::mkdirat(to.folder, target, S_IRWXU)
                  : ::linkat(from.folder, source, to.folder, target, 0)) != 0)
        return errno;
    if ((isFolder ? ::renameat(from.folder, source, to.folder, target)
                  : ::unlinkat(from.folder, source, 0)) == 0)
        return 0;
    const int error = errno;
    ::unlinkat(to.folder, target, isFolder ? AT_REMOVEDIR : 0);
    return error;
}

/// Refused when the destination is there already, or would lie inside the source.
Outcome checkForCopy(const Place &source, const Place &destination)
{
    const Result<bool> inside = liesInside(destination.folder, source);
    if (!inside)
        return Failure{inside.reason()};
    if (*inside)
        return Failure{u"the destination lies inside the source"_s};
    struct stat status = {};
    if (::fstatat(destination.folder, destination.name.constData(), &status, AT_SYMLINK_NOFOLLOW) ==
        0)
        return Failure{u"the destination exists"_s};
    return {};
}

/// A flush can take as long as the copy before it: whoever shows progress goes on repainting.
int flushFileSystem(int folder, const Tick &tick)
{
    std::future<int> flushed;
    try {
        flushed = std::async(std::launch::async, Native::flushFileSystem, folder);
    } catch (const std::system_error &) {
        return Native::flushFileSystem(folder); // no thread to be had
    }
    while (flushed.wait_for(std::chrono::milliseconds(33)) != std::future_status::ready)
        tick();
    return flushed.get();
}

/// Hidden, and telling whose it is when a killed program leaves it behind.
QByteArray temporaryName()
{
    const quint64 random = QRandomGenerator::system()->generate64();
    return ".Brimvale-" + QByteArray::number(random, 16) + ".partial";
}

enum class Flush { No, BeforeItGetsItsName };

/// Answers what was copied.
Result<TreeListing> copyIntoPlace(const Place &source, const Place &destination, Flush flush,
                                  const ProgressHandler &progress)
{
    if (const Outcome check = checkForCopy(source, destination); !check)
        return Failure{check.reason()};
    const Place temporary = {destination.folder, temporaryName()};
    TreeCopy copy(source, temporary, progress);
    const Tick tick = [&copy] { copy.tick(); };
    Outcome done = copy.run();
    if (done && flush == Flush::BeforeItGetsItsName)
        done = outcome(u"cannot flush the copy"_s, flushFileSystem(destination.folder, tick));
    if (done)
        done = outcome(u"cannot name the copy"_s, renameExclusively(temporary, destination));
    if (done)
        return copy.listing();

    if (const auto leftovers = listTree(temporary, Access::Forced, tick))
        std::ignore = removeTree(*leftovers, temporary, tick);
    return Failure{done.reason()};
}

Outcome moveAcrossFileSystems(const Place &source, const Place &destination,
                              const ProgressHandler &progress)
{
    const auto copied = copyIntoPlace(source, destination, Flush::BeforeItGetsItsName, progress);
    if (!copied)
        return Failure{copied.reason()};
    // Its name too is on the disk before the source goes.
    Outcome done = outcome(u"cannot flush the destination's folder"_s,
                           Native::flushFolder(destination.folder));
    if (done)
        done = removeTree(*copied, source);
    if (!done)
        return Failure{u"the copy is in its place, but the source remains: "_s + done.reason()};
    return {};
}

} // namespace

Failure Native::failure(const QString &what, int error)
{
    return {what + u": "_s + QString::fromStdString(std::generic_category().message(error))};
}

int renameExclusively(const Place &from, const Place &to)
{
    const int error = Native::renameNoReplace(from, to);
    if (error != EINVAL && error != ENOTSUP && error != ENOSYS)
        return error;
    // EINVAL also says that the destination lies inside the source.
    const Result<bool> inside = liesInside(to.folder, from);
    return inside && !*inside ? renameByReservation(from, to) : error;
}

Item itemAt(const QString &path)
{
    const QString real = QFileInfo(Path::expandingTilde(path)).canonicalFilePath();
    return {Path::withoutLastComponent(real), Path::lastComponent(real)};
}

bool exists(const QString &path)
{
    const QString expanded = Path::expandingTilde(path);
    struct stat status = {};
    return expanded.startsWith(u'/') && isEncodable(expanded) &&
           ::stat(QFile::encodeName(expanded).constData(), &status) == 0;
}

Outcome createFolder(const QString &path)
{
    const QString expanded = Path::expandingTilde(path);
    const auto item = open({Path::withoutLastComponent(expanded), Path::lastComponent(expanded)});
    if (!item)
        return Failure{item.reason()};
    const int error = ::mkdirat(item->place.folder, item->place.name.constData(), 0777);
    return outcome(u"cannot create "_s + expanded, error == 0 ? 0 : errno);
}

Outcome move(const Item &source, const Item &destination, const ProgressHandler &progress)
{
    const auto from = open(source);
    const auto to = open(destination);
    if (!from || !to)
        return Failure{from.reason() + to.reason()};
    const int error = renameExclusively(from->place, to->place);
    return error == EXDEV ? moveAcrossFileSystems(from->place, to->place, progress)
                          : outcome(u"cannot move "_s + source.name, error);
}

Outcome copy(const Item &source, const Item &destination, const ProgressHandler &progress)
{
    const auto from = open(source);
    const auto to = open(destination);
    if (!from || !to)
        return Failure{from.reason() + to.reason()};
    // The source stays: a copy that the power failed can be made again, and a flush would cost
    // more than the copy itself.
    const auto copied = copyIntoPlace(from->place, to->place, Flush::No, progress);
    return copied ? Outcome() : Failure{copied.reason()};
}

Outcome copyExtendedAttributes(const QString &path, int descriptor)
{
    const FileDescriptor original(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    const int error = original ? Native::copyExtendedAttributes(original.get(), descriptor) : errno;
    return outcome(u"cannot keep the attributes of "_s + path, error);
}

Outcome flush(const QString &folder, const ProgressHandler &progress)
{
    const QByteArray path = QFile::encodeName(Path::expandingTilde(folder));
    const FileDescriptor opened(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const Tick tick = [&progress] {
        if (progress)
            progress({});
    };
    const int error = opened ? flushFileSystem(opened.get(), tick) : errno;
    return outcome(u"cannot flush "_s + folder, error);
}

Outcome trash(const Item &item)
{
    const auto opened = open(item);
    if (!opened)
        return Failure{opened.reason()};
    return Native::trash(opened->place, Path::expandingTilde(item.folder));
}

} // namespace FileTree
