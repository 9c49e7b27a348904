#include "WholeFile_p.h"

#include <linux/fs.h>
#include <stdio.h> // NOLINT(modernize-deprecated-headers): renameat2

#include <cerrno>

namespace WholeFileNative {

int exchange(const FileTree::Place &one, const FileTree::Place &other)
{
    const bool done = ::renameat2(one.folder, one.name.constData(), other.folder,
                                  other.name.constData(), RENAME_EXCHANGE) == 0;
    return done ? 0 : errno;
}

} // namespace WholeFileNative
