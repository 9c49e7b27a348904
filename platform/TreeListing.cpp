#include "TreeListing.h"

#include "FolderCursor.h"

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
            tree.folders.push_back(
                {folder, name, Native::stampOf(status), mode_t(status.st_mode & 07777)});
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
        return failure(u"cannot find "_s + QFile::decodeName(root.name), error);
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
            return failure(u"cannot read "_s + tree.path(at.parent, at.name), error);
        }
    }
    return tree;
}

} // namespace FileTree
