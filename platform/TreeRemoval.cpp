#include "TreeRemoval.h"

#include "FolderCursor.h"
#include "Leftovers.h"

#include <QFile>

#include <fcntl.h>

using namespace Qt::StringLiterals;

namespace FileTree {

namespace {

Failure changed()
{
    return Failure{u"it is not any more what it was"_s};
}

/// No system removes a file on the condition that it is still the same one. So it is put under a
/// name that nobody else knows, looked at there, and put back when it is another one.
Outcome removeEntry(const TreeListing::Entry &entry, const Place &place)
{
    Stamp now;
    if (const int error = stampAt(place, &now))
        return error == ENOENT ? Outcome() : failure(u"it cannot be found"_s, error);
    // The removal of one of its names changes a file.
    if (entry.hasMoreNames ? !now.hasSameContent(entry.stamp) : now != entry.stamp)
        return changed();

    const Place aside = {place.folder, asideName()};
    int error =
        ::renameat(place.folder, place.name.constData(), aside.folder, aside.name.constData()) == 0
            ? 0
            : errno;
    if (error != 0 && presence(now, aside) != Presence::There)
        return failure(u"it cannot be renamed"_s, error);
    error = stampAt(aside, &now);
    const bool isSame = error == 0 && now.hasSameContent(entry.stamp);
    if (isSame && ::unlinkat(aside.folder, aside.name.constData(), 0) == 0)
        return {};
    if (isSame)
        error = errno;
    if (stampAt(aside, &now) == ENOENT)
        return {};
    if (renameExclusively(aside, place) != 0)
        return Failure{u"it remains as "_s + QFile::decodeName(aside.name)};
    return error == 0 ? changed() : failure(u"it cannot be removed"_s, error);
}

/// Of a folder that stays because of what is in it, the mode stays too.
Outcome removeFolder(const TreeListing::Folder &folder, const Place &place)
{
    Stamp now;
    if (const int error = stampAt(place, &now))
        return error == ENOENT ? Outcome() : failure(u"it cannot be found"_s, error);
    if (!now.isSameItem(folder.stamp))
        return changed();
    if (::unlinkat(place.folder, place.name.constData(), AT_REMOVEDIR) == 0)
        return {};
    const int error = errno;
    if (presence(now, place) == Presence::NotThere)
        return {};
    if ((folder.mode & S_IRWXU) != S_IRWXU)
        std::ignore =
            ::fchmodat(place.folder, place.name.constData(), folder.mode, AT_SYMLINK_NOFOLLOW);
    return failure(u"it cannot be removed"_s, error);
}

} // namespace

Outcome removeTree(const TreeListing &tree, const Place &root, const Tick &tick)
{
    FolderCursor cursor(tree, root, Access::Forced);
    Outcome outcome;
    const auto remove = [&](const auto &what, size_t folder, const auto &removal) {
        if (tick)
            tick();
        const int descriptor = cursor.open(folder);
        const Outcome removed =
            descriptor < 0 ? failure(u"its folder cannot be opened"_s, errno)
                           : removal(what, {descriptor, cursor.nameHere(folder, what.name)});
        if (!removed && outcome)
            outcome = Failure{tree.path(folder, what.name) + u": "_s + removed.reason()};
    };

    for (const TreeListing::Entry &entry : tree.entries)
        remove(entry, entry.folder, removeEntry);
    for (size_t index = tree.folders.size() - 1; index > 0; --index)
        remove(tree.folders[index], tree.folders[index].parent, removeFolder);
    return outcome;
}

} // namespace FileTree
