#pragma once

#include "TemplateFolder.h"
#include "TemplateLibrary.h"
#include "platform/FileTree.h"

#include <optional>

/// What an install would meet at its destination, and what is to be said of it beforehand.
struct InstallForecast
{
    enum class Place {
        Free,
        Taken,  ///< by a template of that name, which would go to the Trash
        Itself, ///< the folder lies there already: it would go to the Trash, and nothing come back
        Missing ///< Motion's folder for that category is not there
    };

    Place place = Place::Free;
    QStringList warnings; ///< a sentence each
};

/// Looks at the library only. `contents` is what is known of the folder so far; `isChosen` says
/// whether it was dropped or chosen, not typed.
InstallForecast forecastInstall(const FileTree::Item &source, const TemplateCategory &category,
                                const QString &subCategory,
                                const std::optional<TemplateFolder> &contents, bool isChosen);
