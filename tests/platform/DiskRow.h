#pragma once

#include "platform/FileTree.h"

#include <QByteArrayList>
#include <QStringList>

/// Does what an action of a row says, "copy", "move", "trash", "flush" or "write" with FOLDER NAME
/// and, where there is one, the FOLDER NAME of the destination; whether it was done.
bool runDiskAction(const QStringList &action, FileTree::CopyProgress *last);

/// Tries a row "what is on the disk (DiskSteps.h) | an action | what comes of it": "refused", or
/// all that has changed (HomeChanges.h), and what was counted where the row says "bytes". No file
/// may be left open.
void tryDiskRow(const QByteArrayList &row);
