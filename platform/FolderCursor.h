#pragma once

#include "TreeListing.h"

namespace FileTree {

/// Opens the folders of a listed tree, one at a time and each from its neighbour, so that
/// neither the depth of the tree nor the length of its paths matters and no link is followed.
/// A folder that is not the listed one any more is not opened.
class FolderCursor
{
public:
    FolderCursor(const TreeListing &tree, Place root, Access access = Access::AsItIs);

    /// The descriptor, valid until the next call; -1 and errno when the folder cannot be opened.
    int open(size_t folder);

    /// What is called `name` in a listed folder, here where the tree stands.
    [[nodiscard]] const QByteArray &nameHere(size_t folder, const QByteArray &name) const;

private:
    bool ascend();
    bool descend(size_t folder);
    [[nodiscard]] int current() const { return m_folder == 0 ? m_root.folder : m_open.get(); }

    const TreeListing &m_tree;
    const Place m_root;
    const Access m_access;
    size_t m_folder = 0;
    FileDescriptor m_open; // none in the folder that holds the tree
    std::vector<Stamp> m_way;
};

/// Opens a folder by its own name, never through a link.
FileDescriptor openFolder(int parent, const QByteArray &name);

} // namespace FileTree
