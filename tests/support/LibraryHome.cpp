#include "LibraryHome.h"

using namespace Qt::StringLiterals;

LibraryHome::LibraryHome()
{
    fill(*this);
}

void LibraryHome::fill(const TestHome &home)
{
    for (const QString &category : categories())
        home.makeFile(folder(category) + u"/Old/Old.moti"_s, category.toUtf8());
    home.makeFile(u"Desktop/Glow/Glow.moti"_s, "new");
}

QStringList LibraryHome::categories()
{
    return {u"Compositions"_s, u"Effects"_s, u"Generators"_s, u"Titles"_s, u"Transitions"_s};
}

QString LibraryHome::folder(const QString &category)
{
    return u"Movies/Motion Templates.localized/"_s + category + u".localized"_s;
}
