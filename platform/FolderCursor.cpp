#include "FolderCursor.h"

#include <fcntl.h>

#include <tuple>

namespace FileTree {

FileDescriptor openFolder(int parent, const QByteArray &name)
{
    return FileDescriptor(
        ::openat(parent, name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

FolderCursor::FolderCursor(const TreeListing &tree, Place root, Access access)
    : m_tree(tree), m_root(std::move(root)), m_access(access)
{
}

const QByteArray &FolderCursor::nameHere(size_t folder, const QByteArray &name) const
{
    return folder == 0 ? m_root.name : name;
}

int FolderCursor::open(size_t folder)
{
    // A parent's index is the smaller one, so the larger of two is never on the common way.
    std::vector<size_t> down;
    for (size_t here = m_folder; here != folder;) {
        if (here > folder) {
            if (!ascend())
                return -1;
            here = m_folder;
        } else {
            down.push_back(folder);
            folder = m_tree.folders[folder].parent;
        }
    }
    for (; !down.empty(); down.pop_back()) {
        if (!descend(down.back()))
            return -1;
    }
    return current();
}

bool FolderCursor::ascend()
{
    const size_t parent = m_tree.folders[m_folder].parent;
    FileDescriptor above;
    if (parent != 0) {
        above = openFolder(m_open.get(), "..");
        struct stat status = {};
        if (!above || ::fstat(above.get(), &status) != 0)
            return false;
        if (!Native::stampOf(status).isSameItem(m_way[m_way.size() - 2])) {
            errno = ESTALE; // moved away meanwhile
            return false;
        }
    }
    m_open = std::move(above);
    m_way.pop_back();
    m_folder = parent;
    return true;
}

bool FolderCursor::descend(size_t folder)
{
    const Place place = {current(), nameHere(m_folder, m_tree.folders[folder].name)};
    const Stamp &listed = m_tree.folders[folder].stamp;
    FileDescriptor below = openFolder(place.folder, place.name);
    if (!below && errno == EACCES && m_access == Access::Forced &&
        presence(listed, place) == Presence::There &&
        ::fchmodat(place.folder, place.name.constData(), S_IRWXU, AT_SYMLINK_NOFOLLOW) == 0)
        below = openFolder(place.folder, place.name);
    struct stat status = {};
    if (!below || ::fstat(below.get(), &status) != 0)
        return false;
    const Stamp found = Native::stampOf(status);
    if (m_access != Access::ToCopy && !found.isSameItem(listed)) {
        errno = ESTALE; // swapped meanwhile
        return false;
    }
    if (m_access == Access::Forced && (status.st_mode & S_IRWXU) != S_IRWXU)
        std::ignore = ::fchmod(below.get(), (status.st_mode & 07777) | S_IRWXU);
    m_open = std::move(below);
    m_way.push_back(found);
    m_folder = folder;
    return true;
}

} // namespace FileTree
