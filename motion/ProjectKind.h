#pragma once

#include <QString>

#include <array>

/// A kind of file that Motion saves, told by the extension of its name.
struct ProjectKind
{
    QString extension;
    QString iconName; ///< of the image resource, its extension included
};

/// Effect, document, title and transition, in the order in which they are tried and offered.
const std::array<ProjectKind, 4> &projectKinds();

/// The kind with exactly this extension, upper and lower case told apart, or null.
const ProjectKind *projectKind(const QString &extension);
