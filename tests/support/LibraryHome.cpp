#include "LibraryHome.h"

using namespace Qt::StringLiterals;

LibraryHome::LibraryHome()
{
    for (const QString &category : categories())
        makeFile(folder(category) + u"/Old/Old.moti"_s, category.toUtf8());
    makeFile(u"Desktop/Glow/Glow.moti"_s, "new");
}

QStringList LibraryHome::categories()
{
    return {u"Compositions"_s, u"Effects"_s, u"Generators"_s, u"Titles"_s, u"Transitions"_s};
}

QString LibraryHome::folder(const QString &category)
{
    return u"Movies/Motion Templates.localized/"_s + category + u".localized"_s;
}

QMap<QString, QByteArray> LibraryHome::withMoved(const QMap<QString, QByteArray> &snapshot,
                                                 const QString &from, const QString &to)
{
    QMap<QString, QByteArray> moved;
    for (auto item = snapshot.begin(); item != snapshot.end(); ++item) {
        const bool isIt = item.key() == from || item.key().startsWith(from + u'/');
        moved.insert(isIt ? to + item.key().mid(from.size()) : item.key(), item.value());
    }
    return moved;
}
