#include "TreeListing.h"

#include <QFile>

#include <dirent.h>
#include <fcntl.h>

#include <map>
#include <memory>

using namespace Qt::StringLiterals;

namespace FileTree {

QString TreeListing::path(size_t folder, const QByteArray &name) const
{
    QByteArray path = name;
    for (; folder != 0; folder = folders[folder].parent)
        path.prepend(folders[folder].name + '/');
    return QFile::decodeName(path);
}

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
        ::fchmod(below.get(), (status.st_mode & 07777) | S_IRWXU);
    m_open = std::move(below);
    m_way.push_back(found);
    m_folder = folder;
    return true;
}

namespace {

TreeListing::Kind kindOf(const struct stat &status)
{
    if (S_ISREG(status.st_mode))
        return TreeListing::Kind::File;
    return S_ISLNK(status.st_mode) ? TreeListing::Kind::Link : TreeListing::Kind::Other;
}

} // namespace

int readFolder(int folder, const std::function<int(const QByteArray &)> &found)
{
    FileDescriptor again = openFolder(folder, ".");
    const std::unique_ptr<DIR, int (*)(DIR *)> reader(again ? ::fdopendir(again.get()) : nullptr,
                                                      ::closedir);
    if (!reader)
        return errno;
    again.release();
    for (;;) {
        errno = 0;
        const dirent *next = ::readdir(reader.get());
        if (!next)
            return errno;
        const QByteArray name(next->d_name);
        if (name == "." || name == "..")
            continue;
        if (const int error = found(name))
            return error;
    }
}

Result<TreeListing> listTree(const Place &root, Access access, const Tick &tick)
{
    TreeListing tree;
    std::vector<size_t> unread;
    std::map<std::pair<dev_t, ino_t>, size_t> firstNames;
    FolderCursor cursor(tree, root, access);

    const auto list = [&](int descriptor, size_t folder, const QByteArray &name) {
        struct stat status = {};
        if (::fstatat(descriptor, name.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0)
            return errno;
        if (S_ISDIR(status.st_mode)) {
            unread.push_back(tree.folders.size());
            tree.folders.push_back({folder, name, Native::stampOf(status), status.st_mode & 07777});
            return 0;
        }
        TreeListing::Entry entry = {folder, name, kindOf(status), Native::stampOf(status)};
        entry.hasMoreNames = status.st_nlink > 1;
        if (entry.hasMoreNames) {
            const auto [first, isNew] = firstNames.try_emplace(
                {entry.stamp.device, entry.stamp.inode}, tree.entries.size());
            if (!isNew)
                entry.sameAs = first->second;
        }
        if (entry.kind == TreeListing::Kind::File && entry.sameAs == TreeListing::none)
            tree.bytes += entry.stamp.size;
        tree.entries.push_back(std::move(entry));
        return 0;
    };

    if (const int error = list(root.folder, 0, root.name))
        return Native::failure(u"cannot find "_s + QFile::decodeName(root.name), error);
    while (!unread.empty()) {
        const size_t folder = unread.back();
        unread.pop_back();
        const int descriptor = cursor.open(folder);
        const int error =
            descriptor < 0 ? errno : readFolder(descriptor, [&](const QByteArray &name) {
                if (tick)
                    tick();
                const int failed = list(descriptor, folder, name);
                return failed == ENOENT ? 0 : failed;
            });
        if (error != 0) {
            const TreeListing::Folder &at = tree.folders[folder];
            return Native::failure(u"cannot read "_s + tree.path(at.parent, at.name), error);
        }
    }
    return tree;
}

} // namespace FileTree
