#include "FileTree.h"

#include "FileDescriptor.h"
#include "FileTree_p.h"
#include "Leftovers.h"
#include "Path.h"
#include "SecondThread.h"
#include "TreeCopy.h"
#include "TreeRemoval.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>

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
        return failure(u"cannot open "_s + folder, errno);
    opened.place = {opened.folder.get(), QFile::encodeName(item.name)};
    return opened;
}

Outcome outcome(const QString &what, int error)
{
    if (error != 0)
        return failure(what, error);
    return {};
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
    return SecondThread([folder] { return Native::flushFileSystem(folder); }).wait(tick);
}

/// Where there is no more to tell than that the program still lives.
Tick ticking(const ProgressHandler &progress, const CopyProgress &state)
{
    return [&progress, state, next = QDeadlineTimer(reportInterval)]() mutable {
        if (!progress || !next.hasExpired())
            return;
        next = QDeadlineTimer(reportInterval);
        progress(state);
    };
}

enum class Flush { No, BeforeItGetsItsName };

/// Answers what was copied.
Result<TreeListing> copyIntoPlace(const Place &source, const Place &destination, Flush flush,
                                  const ProgressHandler &progress)
{
    if (const Outcome check = checkForCopy(source, destination); !check)
        return Failure{check.reason()};
    const Place temporary = {destination.folder, partialName()};
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
    Outcome done =
        outcome(u"cannot flush the destination's folder"_s, Native::flushFile(destination.folder));
    if (done)
        done = removeTree(*copied, source, ticking(progress, {copied->bytes, copied->bytes}));
    if (!done)
        return Failure{u"the copy is in its place, but not all of the source is gone: "_s +
                       done.reason()};
    return {};
}

enum class IfThere { Refuse, Take };

Outcome create(const QString &path, IfThere ifThere)
{
    const QString expanded = Path::expandingTilde(path);
    const auto item = open({Path::withoutLastComponent(expanded), Path::lastComponent(expanded)});
    if (!item)
        return Failure{item.reason()};
    const Place &place = item->place;
    const bool isNew = ::mkdirat(place.folder, place.name.constData(), 0777) == 0;
    if (!isNew && (errno != EEXIST || ifThere == IfThere::Refuse))
        return outcome(u"cannot create "_s + expanded, errno);
    const int error = Native::flushFile(place.folder);
    if (error != 0 && isNew)
        std::ignore = ::unlinkat(place.folder, place.name.constData(), AT_REMOVEDIR);
    return outcome(u"cannot flush the folder of "_s + expanded, error);
}

} // namespace

Failure failure(const QString &what, int error)
{
    return {what + u": "_s + QString::fromStdString(std::generic_category().message(error))};
}

mode_t keepOwner(int file, const struct stat &status)
{
    mode_t mode = status.st_mode & 07777;
    struct stat now = {};
    const bool hasBoth = ::fstat(file, &now) == 0 && now.st_uid == status.st_uid &&
                         now.st_gid == status.st_gid; // some disks cannot even say so
    if (hasBoth || ::fchown(file, status.st_uid, status.st_gid) == 0)
        return mode;
    mode &= ~mode_t(S_ISUID | S_ISGID);
    if (::fchown(file, uid_t(-1), status.st_gid) == 0)
        return mode;
    const mode_t everybody = mode & (mode >> 3) & S_IRWXO; // who was in the group is among others
    return (mode & ~mode_t(S_IRWXG | S_IRWXO)) | mode_t(everybody << 3) | everybody;
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
    return create(path, IfThere::Refuse);
}

Outcome createFolders(const QString &path)
{
    if (exists(path))
        return {};
    if (!path.startsWith(u'/'))
        return Failure{u"no absolute path: "_s + path};
    const Outcome above = createFolders(Path::withoutLastComponent(path));
    return above ? create(path, IfThere::Take) : above;
}

Outcome move(const Item &source, const Item &destination, const ProgressHandler &progress)
{
    const auto from = open(source);
    const auto to = open(destination);
    if (!from || !to)
        return Failure{from.reason() + to.reason()};
    std::ignore = removeOldPartials(to->place.folder);
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
    std::ignore = removeOldPartials(to->place.folder);
    // The source stays: a copy that the power failed can be made again, and a flush would cost
    // more than the copy itself.
    const auto copied = copyIntoPlace(from->place, to->place, Flush::No, progress);
    return copied ? Outcome() : Failure{copied.reason()};
}

Outcome flush(const QString &folder, const ProgressHandler &progress)
{
    const QByteArray path = QFile::encodeName(Path::expandingTilde(folder));
    const FileDescriptor opened(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const int error = opened ? flushFileSystem(opened.get(), ticking(progress, {})) : errno;
    return outcome(u"cannot flush "_s + folder, error);
}

Outcome flush(const Item &item)
{
    const auto opened = open(item);
    if (!opened)
        return Failure{opened.reason()};
    const FileDescriptor file(::openat(opened->place.folder, opened->place.name.constData(),
                                       O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    // A link is no more than its name.
    int error = file ? Native::flushFile(file.get()) : errno == ELOOP ? 0 : errno;
    if (error == 0)
        error = Native::flushFile(opened->place.folder);
    return outcome(u"cannot flush "_s + item.name, error);
}

Outcome trash(const Item &item)
{
    const auto opened = open(item);
    if (!opened)
        return Failure{opened.reason()};
    return Native::trash(opened->place, Path::expandingTilde(item.folder));
}

} // namespace FileTree
