#pragma once

#include "FileDescriptor.h"
#include "FileTree_p.h"

#include <vector>

namespace FileTree {

/// Called now and then by what takes long.
using Tick = std::function<void()>;

/// A tree as it was found on the disk. The first folder is not of the tree, it holds it; every
/// other folder comes after the one that it lies in.
struct TreeListing
{
    enum class Kind { File, Link, Other };

    struct Folder
    {
        size_t parent = 0;
        QByteArray name;
    };
    struct Entry
    {
        size_t folder = 0;
        QByteArray name;
        Kind kind = Kind::Other;
        qint64 size = 0;
    };

    std::vector<Folder> folders = {{}};
    std::vector<Entry> entries;
    qint64 bytes = 0; ///< of all files

    /// For messages, relative to the folder that holds the tree.
    [[nodiscard]] QString path(size_t folder, const QByteArray &name) const;
};

enum class Access { AsItIs, Forced };

/// Opens the folders of a listed tree, one at a time and each from its neighbour, so that
/// neither the depth of the tree nor the length of its paths matters and no link is followed.
/// The tree may stand elsewhere than where it was listed.
class FolderCursor
{
public:
    /// Forced access gives the user the right to read and write each folder it opens.
    FolderCursor(const TreeListing &tree, Place root, Access access = Access::AsItIs);

    /// The descriptor, valid until the next call; -1 and errno when the folder cannot be opened.
    int open(size_t folder);

    /// What is called `name` in a listed folder, here where the tree stands.
    [[nodiscard]] const QByteArray &nameHere(size_t folder, const QByteArray &name) const;

private:
    struct Identity
    {
        dev_t device;
        ino_t inode;
    };

    bool ascend();
    bool descend(size_t folder);
    [[nodiscard]] int current() const { return m_folder == 0 ? m_root.folder : m_open.get(); }

    const TreeListing &m_tree;
    const Place m_root;
    const Access m_access;
    size_t m_folder = 0;
    FileDescriptor m_open; // none in the folder that holds the tree
    std::vector<Identity> m_way;
};

/// Opens a folder by its own name, never through a link.
FileDescriptor openFolder(int parent, const QByteArray &name);

Result<TreeListing> listTree(const Place &root, Access access, const Tick &tick = {});

/// Removes what is listed and nothing else; goes on after a failure and answers the first.
Outcome removeTree(const TreeListing &tree, const Place &root, const Tick &tick = {});

} // namespace FileTree
