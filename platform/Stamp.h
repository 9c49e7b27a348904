#pragma once

#include <QtGlobal>

#include <sys/types.h>

namespace FileTree {

/// Told again by these, an item is the one that was seen, and as it was.
struct Stamp
{
    dev_t device = 0;
    ino_t inode = 0;
    qint64 size = 0;
    qint64 modified = 0; ///< nanoseconds
    qint64 changed = 0;  ///< its attributes too, its name, and how many it has

    [[nodiscard]] bool isSameItem(const Stamp &other) const
    {
        return device == other.device && inode == other.inode;
    }
    [[nodiscard]] bool hasSameContent(const Stamp &other) const
    {
        return isSameItem(other) && size == other.size && modified == other.modified;
    }
    bool operator==(const Stamp &) const = default;
};

} // namespace FileTree
