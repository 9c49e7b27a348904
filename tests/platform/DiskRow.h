#pragma once

#include <QByteArrayList>

/// Tries a row "what is on the disk (DiskSteps.h) | an action | what comes of it": an action is copy,
/// move, trash or write FOLDER NAME [FOLDER NAME], and comes to "refused", or to "done" with what
/// else went, was made, holds the text "new", or was counted:
///     gone PATH     made PATH     new PATH     bytes NUMBER
/// Everything else stays as it was, each file, link and folder of it.
void tryDiskRow(const QByteArrayList &row);
