#pragma once

#include "platform/FileTree.h"

#include <QByteArrayList>
#include <QStringList>

/// Does what an action of a row says, "copy", "move", "trash", "flush" or "write" with FOLDER NAME
/// and, where there is one, the FOLDER NAME of the destination; whether it was done.
bool runDiskAction(const QStringList &action, FileTree::CopyProgress *last);

/// Tries a row "what is on the disk (DiskSteps.h) | an action | what comes of it", which is
/// "refused", or "done" with what else went, was made, holds the text "new", or was counted:
///     gone PATH     made PATH     new PATH     bytes NUMBER
/// Everything else stays as it was, each file, link and folder of it.
void tryDiskRow(const QByteArrayList &row);
