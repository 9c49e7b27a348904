#include "TreeListing.h"

#include <QFile>

#include <dirent.h>
#include <fcntl.h>

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
        const Identity &expected = m_way[m_way.size() - 2];
        if (status.st_dev != expected.device || status.st_ino != expected.inode) {
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
    const QByteArray &name = nameHere(m_folder, m_tree.folders[folder].name);
    FileDescriptor below = openFolder(current(), name);
    if (!below && errno == EACCES && m_access == Access::Forced &&
        ::fchmodat(current(), name.constData(), S_IRWXU, AT_SYMLINK_NOFOLLOW) == 0)
        below = openFolder(current(), name);
    struct stat status = {};
    if (!below || ::fstat(below.get(), &status) != 0)
        return false;
    if (m_access == Access::Forced && (status.st_mode & S_IRWXU) != S_IRWXU)
        ::fchmod(below.get(), (status.st_mode & 07777) | S_IRWXU);
    m_open = std::move(below);
    m_way.push_back({status.st_dev, status.st_ino});
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

/// Calls `found(name)` for everything in an open folder, until it answers an error number.
template <class Found>
int readFolder(int folder, const Found &found)
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

} // namespace

Result<TreeListing> listTree(const Place &root, Access access, const Tick &tick)
{
    TreeListing tree;
    std::vector<size_t> unread;
    FolderCursor cursor(tree, root, access);

    const auto list = [&](int descriptor, size_t folder, const QByteArray &name) {
        struct stat status = {};
        if (::fstatat(descriptor, name.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0)
            return errno;
        if (S_ISDIR(status.st_mode)) {
            unread.push_back(tree.folders.size());
            tree.folders.push_back({folder, name});
            return 0;
        }
        const TreeListing::Kind kind = kindOf(status);
        const qint64 size = kind == TreeListing::Kind::File ? status.st_size : 0;
        tree.entries.push_back({folder, name, kind, size});
        tree.bytes += size;
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

Outcome removeTree(const TreeListing &tree, const Place &root, const Tick &tick)
{
    FolderCursor cursor(tree, root, Access::Forced);
    Outcome outcome;
    const auto remove = [&](size_t folder, const QByteArray &name, int flags) {
        if (tick)
            tick();
        const int descriptor = cursor.open(folder);
        const bool gone =
            descriptor >= 0 &&
            ::unlinkat(descriptor, cursor.nameHere(folder, name).constData(), flags) == 0;
        if (!gone && errno != ENOENT && outcome)
            outcome = Native::failure(u"cannot remove "_s + tree.path(folder, name), errno);
    };

    for (const TreeListing::Entry &entry : tree.entries)
        remove(entry.folder, entry.name, 0);
    for (size_t folder = tree.folders.size() - 1; folder > 0; --folder)
        remove(tree.folders[folder].parent, tree.folders[folder].name, AT_REMOVEDIR);
    return outcome;
}

} // namespace FileTree
