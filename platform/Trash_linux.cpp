#include "FileDescriptor.h"
#include "FileTree_p.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

#include <fcntl.h>

#include <climits>
#include <cstdlib>
#include <memory>
#include <tuple>

using namespace Qt::StringLiterals;

/// The trash as freedesktop.org lays it down. Not QFile::moveToTrash, which in
/// Qt 6.4 moves into the current folder when there is no data folder, never returns when the
/// records cannot be written, and refuses a dangling link.
namespace FileTree::Native {

namespace {

/// `record` of the name "x" is "x.trashinfo" in the folder of the records.
constexpr char recordSuffix[] = ".trashinfo";

struct TrashFolder
{
    FileDescriptor items;
    FileDescriptor records;
};

/// Opens a folder, made for this user alone if it is not there.
FileDescriptor privateFolder(int parent, const QByteArray &name, int openFlags = O_NOFOLLOW)
{
    std::ignore = ::mkdirat(parent, name.constData(), S_IRWXU);
    return FileDescriptor(
        ::openat(parent, name.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | openFlags));
}

TrashFolder trashIn(const FileDescriptor &folder)
{
    if (!folder)
        return {};
    return {privateFolder(folder.get(), "files"), privateFolder(folder.get(), "info")};
}

TrashFolder homeTrash()
{
    QString data = qEnvironmentVariable("XDG_DATA_HOME");
    if (!data.startsWith(u'/'))
        data = QDir::homePath() + u"/.local/share"_s;
    QDir().mkpath(data);
    // The user may well have laid it elsewhere by a link.
    return trashIn(privateFolder(AT_FDCWD, QFile::encodeName(data + u"/Trash"_s), 0));
}

/// The topmost folder of the file system that holds an absolute path without links.
Result<QByteArray> topFolder(QByteArray path)
{
    struct stat here = {};
    struct stat above = {};
    if (::stat(path.constData(), &here) != 0)
        return failure(u"its folder cannot be found"_s, errno);
    while (path != "/") {
        const QByteArray parent = path.left(std::max(path.lastIndexOf('/'), qsizetype(1)));
        if (::stat(parent.constData(), &above) != 0)
            return failure(u"the top of its disk cannot be found"_s, errno);
        if (above.st_dev != here.st_dev)
            break;
        path = parent;
    }
    return path;
}

/// The trash of another file system than the home's, at its top: in a folder that the
/// administrator made for everyone, or else in one of the user's own. Neither may be a link that
/// somebody else laid.
TrashFolder trashAtTop(const QByteArray &top)
{
    const QByteArray user = QByteArray::number(::getuid());
    const FileDescriptor folder(::open(top.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    struct stat status = {};
    const FileDescriptor shared(
        ::openat(folder.get(), ".Trash", O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (shared && ::fstat(shared.get(), &status) == 0 && (status.st_mode & S_ISVTX) != 0) {
        TrashFolder trash = trashIn(privateFolder(shared.get(), user));
        if (trash.items && trash.records)
            return trash;
    }
    const FileDescriptor own = privateFolder(folder.get(), ".Trash-" + user);
    if (!own || ::fstat(own.get(), &status) != 0 || status.st_uid != ::getuid())
        return {};
    return trashIn(own);
}

QByteArray recordOf(const QByteArray &path)
{
    const QString now = QDateTime::currentDateTime().toString(u"yyyy-MM-ddTHH:mm:ss"_s);
    return "[Trash Info]\nPath=" + path.toPercentEncoding("/") +
           "\nDeletionDate=" + now.toLatin1() + '\n';
}

/// The record and its name.
int writeToDisk(const TrashFolder &trash, FileDescriptor &file, const QByteArray &content)
{
    for (qsizetype done = 0; done < content.size();) {
        const ssize_t written =
            ::write(file.get(), content.constData() + done, size_t(content.size() - done));
        if (written < 0 && errno != EINTR)
            return errno;
        done += std::max<ssize_t>(written, 0);
    }
    if (const int error = flushFile(file.get()))
        return error;
    if (const int error = file.close())
        return error;
    return flushFile(trash.records.get());
}

/// The name of the record must not be too long either. No character of UTF-8 is cut.
QByteArray shortened(const QByteArray &name, qsizetype length)
{
    if (name.size() <= length)
        return name;
    while (length > 0 && (name[length] & 0xC0) == 0x80)
        --length;
    return name.left(length);
}

/// The record comes first and holds the name: whenever this is cut short, the item is either
/// where it was or in the trash with its record.
int moveToTrash(const Place &item, const TrashFolder &trash, const QByteArray &record)
{
    Stamp stamp;
    if (const int error = stampAt(item, &stamp))
        return error;
    const QByteArray stem = shortened(item.name, NAME_MAX - qsizetype(sizeof recordSuffix) - 10);
    for (int count = 1;; ++count) {
        const QByteArray name = count == 1 ? stem : stem + '.' + QByteArray::number(count);
        const Place place = {trash.records.get(), name + recordSuffix};
        FileDescriptor file(::openat(place.folder, place.name.constData(),
                                     O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
        int error = file ? 0 : errno;
        if (error == EEXIST)
            continue;
        Stamp made;
        if (!file && (stampAt(place, &made) != 0 || made.size != 0))
            return error;
        if (file)
            error = writeToDisk(trash, file, record);
        if (error == 0)
            error = renameExclusively(item, {trash.items.get(), name});
        // Unless the item is seen to be where it was, the record may be all that tells of it.
        if (error != 0 && presence(stamp, item) == Presence::There)
            std::ignore = ::unlinkat(place.folder, place.name.constData(), 0);
        if (error != EEXIST)
            return error;
    }
}

} // namespace

Outcome trash(const Place &item, const QString &folder)
{
    const QString what = u"cannot trash "_s + QFile::decodeName(item.name);
    struct stat status = {};
    if (::fstatat(item.folder, item.name.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return failure(what, errno); // before a trash is made for nothing
    const std::unique_ptr<char, void (*)(void *)> way(
        ::realpath(QFile::encodeName(folder).constData(), nullptr), std::free);
    if (!way)
        return failure(what, errno);

    const QByteArray real = way.get();
    const QByteArray path = (real == "/" ? real : real + '/') + item.name;
    TrashFolder trash = homeTrash();
    if (!trash.items || !trash.records)
        return Failure{what + u": the trash cannot be used"_s};
    int error = moveToTrash(item, trash, recordOf(path));
    if (error == EXDEV) {
        const Result<QByteArray> top = topFolder(real);
        if (!top)
            return Failure{what + u": "_s + top.reason()};
        trash = trashAtTop(*top);
        if (!trash.items || !trash.records)
            return Failure{what + u": its disk has no trash"_s};
        error = moveToTrash(item, trash, recordOf(path.mid(*top == "/" ? 1 : top->size() + 1)));
    }
    if (error != 0)
        return failure(what, error);
    return {};
}

} // namespace FileTree::Native
