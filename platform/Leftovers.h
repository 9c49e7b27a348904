#pragma once

#include "FileDescriptor.h"
#include "FileTree_p.h"

namespace FileTree {

/// For a copy while it grows: ".Brimvale-….partial", a name that nobody else has.
QByteArray partialName();

/// For an item in the moment before it is removed, or between two names.
QByteArray asideName();

/// Keeps other programs of ours from removing an open file or folder as a leftover, for as long as
/// it is open. EWOULDBLOCK when one of them is about to; 0 also where a disk has no locks, for
/// nobody removes a leftover without one.
int claim(int file);

/// Removes the partial copies in an open folder that nobody claims and that are older than a day:
/// a killed program left them.
Outcome removeOldPartials(int folder);

} // namespace FileTree
