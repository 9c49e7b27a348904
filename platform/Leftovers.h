#pragma once

#include "FileTree_p.h"

namespace FileTree {

/// For a copy while it grows: ".Brimvale-….partial", a name that nobody else has.
QByteArray partialName();

/// For an item in the moment before it is removed, or between two names.
QByteArray asideName();

/// Removes the partial copies that a killed program left in an open folder more than a day ago,
/// and lets no other program of ours do that here for as long as the descriptor is open.
Outcome removeOldPartials(int folder);

} // namespace FileTree
