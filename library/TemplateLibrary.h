#pragma once

#include <QString>

#include <span>

/// One of the five folders of the library in which Motion looks for templates of one sort.
struct TemplateCategory
{
    QString name;                ///< as the user reads it, and as the history keeps it
    QString path;                ///< of its folder, with a leading "~"
    QString extension;           ///< of the Motion files in its templates
    QString installedText;       ///< what the notification of an install says
    QString customInstalledText; ///< the same of an install into a sub-category
};

/// Where Motion keeps the user's own templates. Paths begin with "~" and are expanded just before
/// they are used.
namespace TemplateLibrary {

/// The library's own name, in the user's Movies folder.
QString rootName();
/// The library's root, without a trailing "/". The folder above it is the user's and never created
/// here.
QString root();

/// Compositions, Effects, Generators, Titles, Transitions: a category's place in this order is
/// its row in the window.
std::span<const TemplateCategory> categories();
/// The category of that row, or none.
const TemplateCategory *category(int row);
/// The folder for the templates of a category, or of a sub-category of it where one is named.
QString folder(const TemplateCategory &category, const QString &subCategory);
/// The same place as the user reads it: "Titles", or "Titles › Lower Third".
QString placeName(const TemplateCategory &category, const QString &subCategory);

} // namespace TemplateLibrary
