#include "TemplateLibrary.h"

#include "platform/Path.h"

#include <QCoreApplication>

#include <array>

using namespace Qt::StringLiterals;

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("TemplateLibrary", source);
}

TemplateCategory make(const QString &name, const QString &extension, const char *installed,
                      const char *customInstalled)
{
    return {name, TemplateLibrary::root() + u'/' + name + u".localized"_s, extension,
            text(installed), text(customInstalled)};
}

} // namespace

QString TemplateLibrary::rootName()
{
    return u"Motion Templates.localized"_s;
}

QString TemplateLibrary::root()
{
    return u"~/Movies/"_s + rootName();
}

std::span<const TemplateCategory> TemplateLibrary::categories()
{
    // The one text without a blank before its dots has always been shown so.
    static const std::array all{
        make(u"Compositions"_s, u"motn"_s,
             QT_TRANSLATE_NOOP("TemplateLibrary", "Composition Installed..."),
             QT_TRANSLATE_NOOP("TemplateLibrary", "Composition Installed ...")),
        make(u"Effects"_s, u"moef"_s, QT_TRANSLATE_NOOP("TemplateLibrary", "Effect Installed ..."),
             "Effect Installed ..."),
        make(u"Generators"_s, u"motn"_s,
             QT_TRANSLATE_NOOP("TemplateLibrary", "Generator Installed ..."),
             "Generator Installed ..."),
        make(u"Titles"_s, u"moti"_s, QT_TRANSLATE_NOOP("TemplateLibrary", "Title Installed ..."),
             "Title Installed ..."),
        make(u"Transitions"_s, u"motr"_s,
             QT_TRANSLATE_NOOP("TemplateLibrary", "Transition Installed ..."),
             "Transition Installed ..."),
    };
    return all;
}

const TemplateCategory *TemplateLibrary::category(int row)
{
    const auto all = categories();
    return row >= 0 && row < static_cast<int>(all.size()) ? &all[static_cast<std::size_t>(row)]
                                                          : nullptr;
}

QString TemplateLibrary::folder(const TemplateCategory &category, const QString &subCategory)
{
    return Path::expandingTilde(Path::joined(category.path, subCategory));
}

QString TemplateLibrary::placeName(const TemplateCategory &category, const QString &subCategory)
{
    return subCategory.isEmpty() ? category.name : category.name + u" › "_s + subCategory;
}
