#include "Path.h"

#include <QDir>
#include <QSysInfo>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

QString withoutTrailingSlashes(QString path)
{
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path;
}

/// Some programs name the machine in a file's address, in full or by its first name.
bool isThisMachine(const QString &host)
{
    const QString name = QSysInfo::machineHostName();
    for (const QString &each : {QString(), u"localhost"_s, name, name.section(u'.', 0, 0)}) {
        if (host.compare(each, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

} // namespace

QString Path::lastComponent(const QString &path)
{
    const QString trimmed = withoutTrailingSlashes(path);
    return trimmed == u"/" ? trimmed : trimmed.mid(trimmed.lastIndexOf(u'/') + 1);
}

QString Path::withoutLastComponent(const QString &path)
{
    const QString trimmed = withoutTrailingSlashes(path);
    const qsizetype slash = trimmed.lastIndexOf(u'/');
    return slash < 0 ? QString() : withoutTrailingSlashes(trimmed.left(qMax(slash, qsizetype(1))));
}

QString Path::extension(const QString &path)
{
    const QString name = lastComponent(path);
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot < 0 ? QString() : name.mid(dot + 1);
}

QString Path::withoutExtension(const QString &path)
{
    const QString trimmed = withoutTrailingSlashes(path);
    const qsizetype dot = trimmed.lastIndexOf(u'.');
    return dot > trimmed.lastIndexOf(u'/') ? trimmed.left(dot) : trimmed;
}

QString Path::joined(const QString &folder, const QString &component)
{
    if (component.isEmpty())
        return folder;
    if (folder.isEmpty())
        return component;
    const QString trimmed = withoutTrailingSlashes(folder);
    return (trimmed == u"/" ? QString() : trimmed) + (component.startsWith(u'/') ? u"" : u"/") +
           component;
}

QString Path::expandingTilde(const QString &path)
{
    const bool hasTilde = path == u"~" || path.startsWith(u"~/");
    return hasTilde ? QDir::homePath() + path.mid(1) : path;
}

QString Path::ofAddress(const QUrl &address)
{
    if (!address.isLocalFile() || !isThisMachine(address.host()))
        return {};
    QUrl local = address.adjusted(QUrl::StripTrailingSlash);
    local.setHost(QString()); // or it would become a part of the path
    return local.toLocalFile();
}

QString Path::ofPasted(const QString &text)
{
    QString path = text.trimmed();
    for (const QChar quote : {u'"', u'\''}) {
        if (path.size() > 1 && path.startsWith(quote) && path.endsWith(quote))
            path = path.sliced(1, path.size() - 2).trimmed();
    }
    if (path.startsWith("file:"_L1, Qt::CaseInsensitive))
        path = ofAddress(QUrl(path));
    return path.startsWith(u'/') || path.startsWith(u'~') ? path : text;
}
