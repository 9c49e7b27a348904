#pragma once

#include "FileDescriptor.h"
#include "FileTree_p.h"

#include <cstdint>
#include <vector>

namespace FileTree {

/// Called now and then by what takes long.
using Tick = std::function<void()>;

/// A tree as it was found on the disk. The first folder is not of the tree, it holds it; every
/// other folder comes after the one that it lies in.
struct TreeListing
{
    enum class Kind { File, Link, Other };
    static constexpr size_t none = SIZE_MAX;

    struct Folder
    {
        size_t parent = 0;
        QByteArray name;
        Stamp stamp;
        mode_t mode = 0;
    };
    struct Entry
    {
        size_t folder = 0;
        QByteArray name;
        Kind kind = Kind::Other;
        Stamp stamp; ///< of a file that was copied, from before that
        bool hasMoreNames = false;
        size_t sameAs = none; ///< the entry that is the first name of this one's file
    };

    std::vector<Folder> folders = {{}};
    std::vector<Entry> entries;
    qint64 bytes = 0; ///< of all files, each counted once

    /// For messages, relative to the folder that holds the tree.
    [[nodiscard]] QString path(size_t folder, const QByteArray &name) const;
};

enum class Access {
    AsItIs,
    Forced, ///< gives the user the right to read and write each folder that is opened
    ToCopy, ///< of a tree that is being made after the listed one
};

/// Calls `found(name)` for everything in an open folder, until it answers an error number; answers
/// that, 0 for success.
int readFolder(int folder, const std::function<int(const QByteArray &)> &found);

Result<TreeListing> listTree(const Place &root, Access access, const Tick &tick = {});

} // namespace FileTree
