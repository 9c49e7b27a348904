#include "TestHome.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace {

/// Around every test, from before its application is made: off screen unless QT_QPA_PLATFORM says
/// otherwise, away from the home, the settings and the notifications of whoever runs it.
class Surroundings
{
public:
    Surroundings()
    {
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("LC_ALL", "C.UTF-8"); // the tests expect numbers as they are written there
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    }

private:
    TestHome m_home;
};

const Surroundings surroundings;

} // namespace

TestHome::Folder::~Folder()
{
    std::error_code error;
    const std::filesystem::path home = path().toStdString();
    for (std::filesystem::recursive_directory_iterator all(home, error), end; all != end && !error;
         all.increment(error)) {
        if (all->is_directory(error) && !all->is_symlink(error))
            std::filesystem::permissions(all->path(), std::filesystem::perms::owner_all,
                                         std::filesystem::perm_options::add, error);
    }
}

TestHome::TestHome()
{
    const QByteArray home = m_folder.path().toUtf8();
    qputenv("HOME", home);
    qputenv("XDG_CONFIG_HOME", home + "/.config");
    qputenv("XDG_DATA_HOME", home + "/.local/share");
    qputenv("XDG_CACHE_HOME", home + "/.cache");
    keepSettingsIn(path(u".config"_s));
}

QString TestHome::path(const QString &relative) const
{
    return relative.isEmpty() ? m_folder.path() : m_folder.filePath(relative);
}

QString TestHome::makeFolder(const QString &relative) const
{
    if (!QDir().mkpath(path(relative)))
        qFatal("cannot make a folder for the test");
    return path(relative);
}

QString TestHome::makeFile(const QString &relative, const QByteArray &content) const
{
    makeFolder(QFileInfo(relative).path());
    QFile file(path(relative));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot make a file for the test");
    return path(relative);
}

QString TestHome::makeLink(const QString &relative, const QString &target) const
{
    makeFolder(QFileInfo(relative).path());
    if (!QFile::link(target, path(relative)))
        qFatal("cannot make a link for the test");
    return path(relative);
}

QByteArray TestHome::read(const QString &relative) const
{
    QFile file(path(relative));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool TestHome::exists(const QString &relative) const
{
    const QFileInfo info(path(relative));
    return info.exists() || info.isSymLink();
}

QStringList TestHome::names(const QString &relative) const
{
    return QDir(path(relative))
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

QMap<QString, QByteArray> TestHome::snapshot() const
{
    QMap<QString, QByteArray> items;
    QDirIterator walk(path(), QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QFileInfo info(walk.next());
        QByteArray state = QByteArray::number(info.permissions().toInt(), 16);
        if (info.isSymLink()) {
            state = "link to " + info.symLinkTarget().toUtf8();
        } else if (info.isFile()) {
            state += ' ' + QByteArray::number(info.lastModified().toMSecsSinceEpoch()) + '\n';
            QFile file(info.filePath());
            if (file.open(QIODevice::ReadOnly))
                state += file.readAll();
        }
        items.insert(QDir(path()).relativeFilePath(info.filePath()), state);
    }
    return items;
}
