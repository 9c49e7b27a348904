#include "Operation.h"
#include "history/InstallationRecord.h"
#include "motion/ProjectChanges.h"
#include "platform/FileTree.h"
#include "settings/SettingsStore.h"

#include <QDir>
#include <QFile>
#include <QMap>
#include <QRegularExpression>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <algorithm>
#include <cerrno>
#include <fstream>

using namespace Qt::StringLiterals;

namespace Faults {

namespace fs = std::filesystem;

namespace {

bool step(const QStringList &words)
{
    const auto item = [&](int word) -> FileTree::Item {
        const QString path = QDir::current().absoluteFilePath(words[word]);
        return {path.section(u'/', 0, -2), path.section(u'/', -1)};
    };
    if (words[0] == u"copy" || words[0] == u"move")
        return bool((words[0] == u"copy" ? FileTree::copy : FileTree::move)(item(1), item(2), {}));
    if (words[0] == u"trash")
        return bool(FileTree::trash(item(1)));
    if (words[0] == u"flush")
        return bool(FileTree::flush(item(1)));
    if (words[0] == u"append")
        return bool(appendInstallation({words[1]}));
    if (words[0] == u"set")
        return bool(SettingsStore().setObject(words[1], SettingsStore::theFolder8899));
    Result<ProjectDocument> opened = openProjectDocument(words[1]);
    return opened && setTheme(*opened, words[2]) > 0 && saveProjectDocument(*opened, words[1]);
}

/// A file, or whatever else stands for "PATH KIND …".
void make(const QStringList &words)
{
    const fs::path path = words[0].toStdString();
    const std::string target = words[2].toStdString();
    const bool isFolder = words[1] == u"folder";
    fs::create_directories(isFolder ? path : path.parent_path());
    if (words[1] == u"link")
        fs::create_symlink(target, path);
    else if (words[1] == u"twin")
        fs::create_hard_link(target, path);
    else if (!isFolder)
        std::ofstream(path) << words.mid(3).join(u' ').replace(u'~', u'\n').toStdString();
    if (words[1] == u"thin")
        fs::resize_file(path, 16384);
}

void finish(const QStringList &words)
{
    const QByteArray path = words[0].toUtf8();
    const timespec old[] = {{1600000000, 5}, {1600000000, 5}};
    if (words[1] != u"link" && words[1] != u"twin")
        ::chmod(path.constData(), words[2].toUInt(nullptr, 8));
    if (words[1] != u"new")
        ::lsetxattr(path.constData(), "user.tag", "r", 1, 0);
    if (words[1] != u"new" && words[1] != u"saved")
        ::utimensat(AT_FDCWD, path.constData(), old, AT_SYMLINK_NOFOLLOW);
}

} // namespace

std::vector<Operation> operations()
{
    std::vector<Operation> all;
    QMap<QString, QString> named;
    const QRegularExpression call(u"\\$([-\\w]+)\\(([^()]*)\\)"_s);
    const QString table = contentOf(FAULTS_TABLE).replace(QRegularExpression(u"\n +"_s), u" "_s);
    for (QString line : table.split(u'\n')) {
        for (auto found = call.match(line); found.hasMatch(); found = call.match(line))
            line.replace(found.capturedStart(), found.capturedLength(),
                         QString(named[found.captured(1)]).replace(u'%', found.captured(2)));
        named[line.section(u" := "_s, 0, 0)] = line.section(u" := "_s, 1);
        const QStringList columns = line.split(QRegularExpression(u" *\\| *"_s));
        const auto list = [&](int column) {
            return columns.value(column).split(QRegularExpression(u"; *"_s), Qt::SkipEmptyParts);
        };
        if (columns.size() > 3 && !line.startsWith(u'#'))
            all.push_back({columns[0], list(1), list(2), list(3), list(4), columns.value(5)});
    }
    return all;
}

void renew(const QStringList &made)
{
    for (const char *folder : {"home/.", "other/.", "tmp/."}) {
        for (const fs::directory_entry &entry : fs::recursive_directory_iterator(folder)) {
            if (!entry.is_symlink() && entry.is_directory())
                fs::permissions(entry, fs::perms::owner_all); // or nothing in it goes
        }
        for (const fs::directory_entry &entry : fs::directory_iterator(folder))
            fs::remove_all(entry);
    }
    QList<QStringList> all;
    for (const QString &each : made)
        all << each.split(u' ');
    std::for_each(all.begin(), all.end(), make);
    // What a folder holds comes after it, and has its attributes before it.
    std::for_each(all.rbegin(), all.rend(), finish);
}

bool perform(const QStringList &steps)
{
    const QByteArray here = QDir::currentPath().toUtf8();
    qputenv("HOME", here + "/home");
    qputenv("XDG_DATA_HOME", here + "/home/data");
    qputenv("XDG_CONFIG_HOME", here + "/home/config");
    return std::all_of(steps.begin(), steps.end(),
                       [](const QString &each) { return step(each.split(u' ')); });
}

QString contentOf(const fs::path &path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? QString::fromLatin1(file.readAll()) : QString();
}

} // namespace Faults
