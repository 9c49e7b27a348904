#pragma once

#include "FileTree_p.h"

/// What whole files ask of the system beyond plain POSIX: one file for each platform. An int that
/// is returned is an error number, 0 for success.
namespace WholeFileNative {

/// Lets two files change places in one step: EINVAL, ENOTSUP or ENOSYS where the file system
/// cannot do that.
int exchange(const FileTree::Place &one, const FileTree::Place &other);

} // namespace WholeFileNative
