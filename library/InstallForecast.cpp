#include "InstallForecast.h"

#include "platform/Path.h"

#include <QCoreApplication>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

struct Sentences
{
    Q_DECLARE_TR_FUNCTIONS(InstallForecast)
};

/// The item's path with every link on the way to it looked through, itself not.
QString placeOf(const FileTree::Item &item)
{
    return Path::joined(QFileInfo(Path::expandingTilde(item.folder)).canonicalFilePath(),
                        item.name);
}

InstallForecast::Place placeFor(const FileTree::Item &source, const TemplateCategory &category,
                                const QString &subCategory)
{
    using Place = InstallForecast::Place;
    if (!QFileInfo(Path::expandingTilde(category.path)).isDir())
        return Place::Missing;
    const FileTree::Item destination{TemplateLibrary::folder(category, subCategory), source.name};
    const QFileInfo there(Path::joined(destination.folder, destination.name));
    if (destination.name.isEmpty() || destination.name.contains(u'/') ||
        (!there.exists() && !there.isSymLink()))
        return Place::Free;
    // What lies inside the installed one would go to the Trash with it.
    const QString from = placeOf(source) + u'/';
    return from.startsWith(placeOf(destination) + u'/') ? Place::Itself : Place::Taken;
}

/// The sorts of Motion file inside when none of them is the category's; none otherwise.
QStringList otherKinds(const TemplateFolder &contents, const TemplateCategory &category)
{
    QStringList kinds;
    for (const QString &extension : contents.motionFiles.keys())
        kinds << u'.' + extension;
    return contents.motionFiles.contains(category.extension) ? QStringList() : kinds;
}

} // namespace

InstallForecast forecastInstall(const FileTree::Item &source, const TemplateCategory &category,
                                const QString &subCategory,
                                const std::optional<TemplateFolder> &contents, bool isChosen)
{
    InstallForecast forecast{placeFor(source, category, subCategory), {}};
    QStringList &warnings = forecast.warnings;
    const bool isGone = contents && contents->kind == TemplateFolder::Kind::Missing;
    if (isGone)
        warnings << Sentences::tr("There is no folder at this path.");
    if (contents && contents->kind == TemplateFolder::Kind::File)
        warnings << Sentences::tr("This is a file; a template is a folder.");
    if (!isChosen)
        warnings << Sentences::tr("A typed path must be dropped or chosen to be installed.");
    switch (forecast.place) {
    case InstallForecast::Place::Free:
        break;
    case InstallForecast::Place::Taken:
        warnings << (isGone ? Sentences::tr("Installing would only move the installed one to the "
                                            "Trash.")
                            : Sentences::tr("Replaces the installed one; the old one goes to the "
                                            "Trash."));
        break;
    case InstallForecast::Place::Itself:
        warnings << Sentences::tr(
            "It lies there already: installing would only move it to the Trash.");
        break;
    case InstallForecast::Place::Missing:
        warnings
            << (FileTree::exists(TemplateLibrary::root())
                    ? Sentences::tr("Motion's library has no folder for %1 yet.").arg(category.name)
                    : Sentences::tr("Motion's library is not there yet."));
        break;
    }
    if (const QStringList kinds = contents ? otherKinds(*contents, category) : QStringList();
        !kinds.isEmpty())
        warnings << Sentences::tr("It holds %1 files; %2 are %3 files.")
                        .arg(kinds.join(u", "), category.name, u'.' + category.extension);
    return forecast;
}
