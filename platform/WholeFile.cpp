#include "WholeFile.h"

#include "FileDescriptor.h"
#include "FileTree_p.h"
#include "Leftovers.h"

#include <QFile>

#include <fcntl.h>

#include <filesystem>
#include <tuple>

using namespace Qt::StringLiterals;
using FileTree::failure;
namespace fs = std::filesystem;
using FileTree::Place;
using FileTree::Native::stampOf;

namespace {

// More than a user's file ever has, and what is made of it still fits into memory.
constexpr off_t largestFile = off_t(1) << 30;

constexpr mode_t anyWrite = S_IWUSR | S_IWGRP | S_IWOTH;

/// Where a file is, or will be: its folder, open, and what stands there now.
struct Target
{
    FileDescriptor folder;
    Place place;
    FileDescriptor file; ///< none when nothing is there
    struct stat status = {};

    [[nodiscard]] FileVersion version() const { return stampOf(status); }
};

/// The path without links at its end, also when the last one leads nowhere. Those on the way, and
/// "..", are the system's to follow.
fs::path throughLinks(fs::path path)
{
    constexpr int mostLinks = 40;
    std::error_code error;
    for (int links = 0; links < mostLinks && fs::is_symlink(path, error); ++links)
        path = path.parent_path() / fs::read_symlink(path, error);
    return path;
}

/// 0, or why the open file or folder is not to be written.
int checkForWriting(const Place &place, const struct stat &status)
{
    // What is marked read-only holds for root too, who may do everything.
    if ((status.st_mode & anyWrite) == 0)
        return EACCES;
    return ::faccessat(place.folder, place.name.constData(), W_OK, AT_EACCESS) == 0 ? 0 : errno;
}

Result<Target> openTarget(const QString &path)
{
    const fs::path file = throughLinks(QFile::encodeName(path).toStdString());
    Target target;
    struct stat folder = {};
    target.folder =
        FileDescriptor(::open(file.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!target.folder || ::fstat(target.folder.get(), &folder) != 0)
        return failure(u"cannot open the folder of "_s + path, errno);
    if (const int error = checkForWriting({target.folder.get(), "."}, folder))
        return failure(u"cannot write to the folder of "_s + path, error);
    target.place = {target.folder.get(), QByteArray::fromStdString(file.filename())};
    target.file =
        FileDescriptor(::openat(target.place.folder, target.place.name.constData(),
                                O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC));
    if (!target.file && errno == ENOENT)
        return target;
    if (!target.file || ::fstat(target.file.get(), &target.status) != 0)
        return failure(u"cannot open "_s + path, errno);
    if (!S_ISREG(target.status.st_mode))
        return Failure{path + u" is no regular file"_s};
    if (const int error = checkForWriting(target.place, target.status))
        return failure(u"cannot write "_s + path, error);
    return target;
}

/// What the new file would lose of the one that it replaces: tags and comments above all.
int keepAttributes(const Target &original, int file)
{
    const mode_t mode = FileTree::keepOwner(file, original.status);
    struct stat kept = {};
    if (const int error = FileTree::Native::copyExtendedAttributes(original.file.get(), file))
        return error;
    if (::fstat(file, &kept) != 0)
        return errno;
    const bool isKept = (kept.st_mode & 07777) == mode;
    return isKept || ::fchmod(file, mode) == 0 ? 0 : errno;
}

/// The new file while it grows beside the old one. It goes again, unless it took its place.
class Temporary
{
public:
    Temporary(int folder, mode_t mode)
        : m_place{folder, FileTree::partialName()}
        , m_file(::openat(folder, m_place.name.constData(),
                          O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode))
    {
        if (m_file && ::fstat(m_file.get(), &m_identity) == 0)
            return;
        const int error = errno;
        if (m_file || error != EEXIST)
            std::ignore = ::unlinkat(folder, m_place.name.constData(), 0);
        m_file = FileDescriptor();
        errno = error;
    }
    ~Temporary()
    {
        // After an exchange that failed on its way back, somebody else's file bears the name.
        if (isAt(m_place))
            std::ignore = ::unlinkat(m_place.folder, m_place.name.constData(), 0);
    }
    Q_DISABLE_COPY_MOVE(Temporary)

    explicit operator bool() const { return static_cast<bool>(m_file); }
    [[nodiscard]] int file() const { return m_file.get(); }
    [[nodiscard]] const Place &place() const { return m_place; }

    /// Everything on the disk, and nothing that a server tells only in the end. 0, or the error.
    [[nodiscard]] int finish()
    {
        const int error = FileTree::Native::flushFile(m_file.get());
        const int late = m_file.close();
        return error != 0 ? error : late;
    }

    [[nodiscard]] bool isAt(const Place &place) const
    {
        return FileTree::presence(stampOf(m_identity), place) == FileTree::Presence::There;
    }

private:
    Place m_place;
    FileDescriptor m_file;
    struct stat m_identity = {};
};

Outcome fill(Temporary &temporary, const Target &original, const FileWriter &write)
{
    QFile file;
    if (!file.open(temporary.file(), QIODevice::WriteOnly | QIODevice::Unbuffered) || !write(file))
        return Failure{u"cannot write all of it: "_s + file.errorString()};
    if (original.file) {
        if (const int error = keepAttributes(original, temporary.file()))
            return failure(u"cannot keep the attributes"_s, error);
    }
    if (const int error = temporary.finish())
        return failure(u"cannot flush it"_s, error);
    return {};
}

Failure anothersVersion()
{
    return {u"another program has changed the file meanwhile"_s, true};
}

Outcome flushName(const Place &place)
{
    if (const int error = FileTree::Native::flushFile(place.folder))
        return failure(u"cannot flush its folder"_s, error);
    return {};
}

/// For a file system on which two files cannot change places.
Outcome renameOver(const Temporary &temporary, const Place &place)
{
    const char *from = temporary.place().name.constData();
    const bool done = ::renameat(place.folder, from, place.folder, place.name.constData()) == 0;
    const int error = done ? 0 : errno;
    if (!done && !temporary.isAt(place))
        return failure(u"cannot name it"_s, error);
    return flushName(place);
}

Outcome takePlaceOf(const Target &original, const Temporary &temporary)
{
    const Place &place = original.place;
    FileVersion found;
    int error = FileTree::stampAt(place, &found);
    if (error != 0)
        return failure(u"cannot find it any more"_s, error);
    if (found != original.version())
        return anothersVersion();
    // The old file gets the name of a leftover until it goes, or comes back. Whoever else locks it
    // is no remover of leftovers.
    std::ignore = FileTree::claim(original.file.get());
    error = FileTree::Native::exchange(temporary.place(), place);
    if (error == EINVAL || error == ENOTSUP || error == ENOSYS)
        return renameOver(temporary, place);
    if (error != 0 && !temporary.isAt(place))
        return failure(u"cannot name it"_s, error);
    // What came out is what was read, or goes back; and it is not gone before the new file's name
    // is on the disk.
    error = FileTree::stampAt(temporary.place(), &found);
    const bool isSame = error == 0 && found.hasSameContent(original.version());
    Outcome done = error != 0 ? failure(u"cannot find the old one"_s, error)
                   : isSame   ? flushName(place)
                              : anothersVersion();
    if (done && ::unlinkat(place.folder, temporary.place().name.constData(), 0) != 0) {
        error = errno;
        if (FileTree::stampAt(temporary.place(), &found) != ENOENT)
            done = failure(u"cannot remove the old one"_s, error);
    }
    if (done)
        return done;
    std::ignore = FileTree::Native::exchange(temporary.place(), place);
    if (!temporary.isAt(temporary.place())) {
        // It did not go back, or somebody has replaced ours already: no leftover, to be removed one
        // day.
        const Place aside = {place.folder, FileTree::asideName()};
        if (FileTree::renameExclusively(temporary.place(), aside) == 0)
            return Failure{done.reason() + u"; another version remains as "_s +
                               QFile::decodeName(aside.name),
                           done.isOutdated() && !temporary.isAt(place)};
    }
    return done;
}

Outcome takeFreePlace(const Place &place, const Temporary &temporary)
{
    const int error = FileTree::renameExclusively(temporary.place(), place);
    if (error == EEXIST && !temporary.isAt(place))
        return anothersVersion();
    if (error != 0 && !temporary.isAt(place))
        return failure(u"cannot name it"_s, error);
    Outcome done = flushName(place);
    if (!done && temporary.isAt(place))
        std::ignore = ::unlinkat(place.folder, place.name.constData(), 0);
    return done;
}

} // namespace

Result<WholeFile> readWholeFile(const QString &path)
{
    // A fifo without a writer would be waited for, but for O_NONBLOCK.
    const FileDescriptor file(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file && errno == ENOENT)
        return WholeFile();
    struct stat status = {};
    if (!file || ::fstat(file.get(), &status) != 0)
        return failure(u"cannot open "_s + path, errno);
    if (!S_ISREG(status.st_mode) || status.st_size > largestFile)
        return Failure{path + u" is no regular file, or too large a one"_s};
    WholeFile whole{QByteArray(status.st_size, Qt::Uninitialized), stampOf(status)};
    qsizetype length = 0;
    while (length < whole.content.size()) {
        const ssize_t got = ::read(file.get(), whole.content.data() + length,
                                   size_t(whole.content.size() - length));
        if (got < 0 && errno != EINTR)
            return failure(u"cannot read "_s + path, errno);
        if (got == 0)
            break; // shorter by now: another version, which nobody replaces
        length += std::max<ssize_t>(got, 0);
    }
    whole.content.truncate(length);
    return whole;
}

Result<FileVersion> writeWholeFile(const QString &path, const std::optional<FileVersion> &version,
                                   const FileWriter &write)
{
    const Result<Target> target = openTarget(path);
    if (!target)
        return Failure{target.reason()};
    if (target->file && target->version() != version)
        return anothersVersion();
    std::ignore = FileTree::removeOldPartials(target->folder.get());
    // What others may not read they do not read while it grows either.
    Temporary temporary(target->folder.get(), target->file ? S_IRUSR | S_IWUSR : 0666);
    if (!temporary)
        return failure(u"cannot make a file beside "_s + path, errno);
    Outcome done = fill(temporary, *target, write);
    if (done)
        done = target->file ? takePlaceOf(*target, temporary)
                            : takeFreePlace(target->place, temporary);
    if (!done)
        return Failure{u"cannot write %1: %2"_s.arg(path, done.reason()), done.isOutdated()};
    FileVersion written; // one that no file has, when nobody can tell
    std::ignore = FileTree::stampAt(target->place, &written);
    return written;
}
