#include "Path.h"

#include <QDir>

namespace {

QString withoutTrailingSlashes(QString path)
{
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path;
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
