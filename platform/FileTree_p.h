#pragma once

#include "FileTree.h"
#include "Stamp.h"

#include <QByteArray>

#include <sys/stat.h>

#include <functional>

namespace FileTree {

/// An item by its name in an open folder.
struct Place
{
    int folder = -1;
    QByteArray name;
};

/// What did not work, and the system's own words for why.
Failure failure(const QString &what, int error);

/// Of what stands at a place itself, no link followed. Answers an error number, 0 for success.
int stampAt(const Place &place, Stamp *stamp);

enum class Presence { There, NotThere, Unknown };

/// Whether an item stands at a place: what a call that failed has done all the same.
Presence presence(const Stamp &item, const Place &place);

/// Gives an open file or folder the owner and the group of another where the user may. Answers
/// the mode that it can then have of the other's: a group that it does not get leaves to another
/// one no more than everybody has, and no other user lends it his rights.
mode_t keepOwner(int file, const struct stat &status);

/// Whether an open folder is the item or lies below it, links on the way looked through.
Result<bool> liesInside(int folder, const Place &item);

/// Renames an item, refusing a destination that exists without ever a moment in which one that
/// has just appeared could be replaced. A name that differs in nothing but the case of letters is
/// not taken on a disk that does not tell them apart. Answers an error number, 0 for success,
/// which is held against the disk: what is done is done, whatever the system says.
int renameExclusively(const Place &from, const Place &to);

} // namespace FileTree

/// What the file layer asks of the system beyond plain POSIX: one file for each platform. Names
/// are the bytes that the file system keeps. An int that is returned is an error number, 0 for
/// success.
namespace FileTree::Native {

/// Told the bytes copied since the last call; false ends the copy with ECANCELED.
using Advance = std::function<bool(qint64)>;

Stamp stampOf(const struct stat &status);

/// Renames in one step that refuses an existing destination: EINVAL, ENOTSUP or ENOSYS where the
/// file system cannot do that.
int renameNoReplace(const Place &from, const Place &to);

/// Lets two files change places in one step; fails like renameNoReplace where there is no such
/// step.
int exchange(const Place &one, const Place &other);

/// Makes the file `to` with the content and the attributes of the open file. Holes stay holes, and
/// count as copied; a lock that forbids changes and removal is not taken over.
int copyFile(int from, const struct stat &status, const Place &to, const Advance &advance);

/// Extended attributes and access lists of one open file for another.
int copyExtendedAttributes(int from, int to);

/// Owner, extended attributes, mode and times of one open folder for another.
int copyFolderAttributes(int from, const struct stat &status, int to);

/// Owner and times of a symbolic link.
int copyLinkAttributes(const struct stat &status, const Place &to);

/// Undoes what a new folder took over from the one that it was made in.
int dropInheritance(int folder);

/// Returns when everything written to the file system of an open folder is on the disk.
int flushFileSystem(int folder);

/// Returns when an open file, or the names in an open folder, are on the disk.
int flushFile(int file);

/// `folder` is the absolute path of the item's open folder; it may lead through links.
Outcome trash(const Place &item, const QString &folder);

} // namespace FileTree::Native
