#include "WholeFile_p.h"

#include <stdio.h> // NOLINT(modernize-deprecated-headers): renameatx_np

#include <cerrno>

namespace WholeFileNative {

int exchange(const FileTree::Place &one, const FileTree::Place &other)
{
    const bool done = ::renameatx_np(one.folder, one.name.constData(), other.folder,
                                     other.name.constData(), RENAME_SWAP) == 0;
    return done ? 0 : errno;
}

} // namespace WholeFileNative
