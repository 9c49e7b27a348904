#pragma once

#include "TreeListing.h"

namespace FileTree {

/// Removes what is listed, as long as it is still what its stamps say, and nothing else: what
/// another program has changed, replaced or added stays. Goes on after a failure and answers the
/// first.
Outcome removeTree(const TreeListing &tree, const Place &root, const Tick &tick = {});

} // namespace FileTree
