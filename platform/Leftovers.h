#pragma once

#include "FileDescriptor.h"
#include "FileTree_p.h"

namespace FileTree {

/// For a copy while it grows: ".Brimvale-….partial", a name that nobody else has.
QByteArray partialName();

/// For an item in the moment before it is removed, or between two names.
QByteArray asideName();

/// Keeps other programs of ours from removing a partial copy for as long as the descriptor is open.
FileDescriptor claim(const Place &partial);

/// Removes the partial copies in an open folder that nobody claims and that are older than a day:
/// a killed program left them.
Outcome removeOldPartials(int folder);

} // namespace FileTree
