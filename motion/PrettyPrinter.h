#pragma once

#include "ProjectDocument.h"

#include <QIODevice>

/// Writes the document to the device, every node on a line of its own and one tab a level; inside
/// an element that holds text nothing is moved. False when the device fails.
[[nodiscard]] bool prettyPrint(const ProjectDocument &document, QIODevice &device);
