#pragma once

#include "Result.h"

#include <functional>

/// Everything that moves, copies, trashes or creates on the user's disk.
///
/// Nothing is ever overwritten, no symbolic link is followed out of a tree, and what is asked
/// for happens whole or not at all. An item is refused when its folder is not an absolute path
/// (a leading "~" is expanded first) or when its name is empty, ".", ".." or holds a "/".
namespace FileTree {

/// Something by its name inside a folder.
struct Item
{
    QString folder;
    QString name;
};

struct CopyProgress
{
    qint64 bytesDone = 0;
    qint64 bytesTotal = 0; ///< of all files; 0 while they are still being counted
};

/// Called in the thread that asked for it, some thirty times a second for as long as the disk lets
/// it.
/// Must not throw.
using ProgressHandler = std::function<void(const CopyProgress &)>;

/// What stands at a path, by its own folder and name: of a symbolic link, what it leads to. An item
/// without a name when nothing is there.
Item itemAt(const QString &path);

/// Whether a file or folder is there; a symbolic link counts as what it leads to.
bool exists(const QString &path);

/// Makes one folder inside an existing one; its name is on the disk when this ends. Refused like an
/// item.
Outcome createFolder(const QString &path);

/// Makes a folder and those above it, as far as they are not there. An absolute path.
Outcome createFolders(const QString &path);

/// One rename within a file system, whatever the tree's size. Across file systems the copy is
/// whole and on the disk before it gets its name, and has its name before the source goes, fifos,
/// sockets and devices with it: no copy keeps those. Only what is still what was copied goes: what
/// another program has changed, replaced or added meanwhile stays in the source, and is a failure
/// with the destination in its place, as is a source that cannot be removed.
/// Within a file system the new name is the disk's in its own time: flush() waits for it. Refused
/// when the destination exists or lies inside the source, links looked through. Only a move across
/// file systems takes long enough to report progress.
Outcome move(const Item &source, const Item &destination, const ProgressHandler &progress = {});

/// Copies a file or a tree with its permissions, times, extended attributes, holes, symbolic links
/// (as links) and files of several names, and its owner where the user may give files away. Fifos,
/// sockets and devices in a tree are left out. The copy grows under a hidden name,
/// ".Brimvale-….partial", in the destination's folder; only a killed program leaves it behind, and
/// the next copy or move into that folder removes it when it is a day old. Not flushed. Refused
/// like a move.
Outcome copy(const Item &source, const Item &destination, const ProgressHandler &progress = {});

/// Returns when everything in the file system of this folder is on the disk.
Outcome flush(const QString &folder, const ProgressHandler &progress = {});

/// Returns when this file and its name are on the disk; of a folder the names in it and its own.
Outcome flush(const Item &item);

/// Moves the item to the desktop's trash, from where the file manager can restore it. When that
/// fails the item stays where it was.
Outcome trash(const Item &item);

} // namespace FileTree
