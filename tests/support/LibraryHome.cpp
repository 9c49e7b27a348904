#include "LibraryHome.h"

using namespace Qt::StringLiterals;

LibraryHome::LibraryHome()
{
    for (const Category &category : categories())
        makeFile(category.folder + u"/Old/Old.moti"_s, category.name.toUtf8());
    makeFile(u"Desktop/Glow/Glow.moti"_s, "new");
    makeFile(u"Desktop/Glow/Media/.hidden"_s);
}

const QList<LibraryHome::Category> &LibraryHome::categories()
{
    const auto make = [](const QString &name, const QString &choice, const QString &installed,
                         const QString &customInstalled) {
        return Category{name, choice,
                        u"Movies/Motion Templates.localized/"_s + name + u".localized"_s, installed,
                        customInstalled};
    };
    static const QList<Category> all{
        make(u"Compositions"_s, u"compositionsChoice"_s, u"Composition Installed..."_s,
             u"Composition Installed ..."_s),
        make(u"Effects"_s, u"effectsChoice"_s, u"Effect Installed ..."_s,
             u"Effect Installed ..."_s),
        make(u"Generators"_s, u"generatorsChoice"_s, u"Generator Installed ..."_s,
             u"Generator Installed ..."_s),
        make(u"Titles"_s, u"titlesChoice"_s, u"Title Installed ..."_s, u"Title Installed ..."_s),
        make(u"Transitions"_s, u"transitionsChoice"_s, u"Transition Installed ..."_s,
             u"Transition Installed ..."_s),
    };
    return all;
}

QMap<QString, QByteArray> LibraryHome::withMoved(const QMap<QString, QByteArray> &snapshot,
                                                 const QString &from, const QString &to)
{
    QMap<QString, QByteArray> moved;
    for (auto item = snapshot.begin(); item != snapshot.end(); ++item) {
        const bool isIt = item.key() == from || item.key().startsWith(from + u'/');
        if (!isIt)
            moved.insert(item.key(), item.value());
        else if (!to.isEmpty())
            moved.insert(to + item.key().mid(from.size()), item.value());
    }
    return moved;
}
