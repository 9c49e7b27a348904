#pragma once

#include "FileTree.h"

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

/// Renames an item, refusing a destination that exists without ever a moment in which one that
/// has just appeared could be replaced. Answers an error number, 0 for success.
int renameExclusively(const Place &from, const Place &to);

} // namespace FileTree

/// What the file layer asks of the system beyond plain POSIX: one file for each platform. Names
/// are the bytes that the file system keeps. An int that is returned is an error number, 0 for
/// success.
namespace FileTree::Native {

/// Told the bytes copied since the last call; false ends the copy with ECANCELED.
using Advance = std::function<bool(qint64)>;

Failure failure(const QString &what, int error);

/// Renames in one step that refuses an existing destination: EINVAL, ENOTSUP or ENOSYS where the
/// file system cannot do that.
int renameNoReplace(const Place &from, const Place &to);

/// Makes the file `to` with the content and the attributes of the open file.
int copyFile(int from, const struct stat &status, const Place &to, const Advance &advance);

/// Extended attributes and access lists of one open file for another.
int copyExtendedAttributes(int from, int to);

/// Owner, extended attributes, mode and times of one open folder for another.
int copyFolderAttributes(int from, const struct stat &status, int to);

/// Owner and times of a symbolic link.
int copyLinkAttributes(const struct stat &status, const Place &to);

/// Undoes what a new folder took over from the one that it was made in.
void dropInheritance(int folder);

/// Returns when everything written to the file system of an open folder is on the disk.
int flushFileSystem(int folder);

/// Returns when the names in an open folder are on the disk.
int flushFolder(int folder);

/// `folder` is the absolute path of the item's open folder; it may lead through links.
Outcome trash(const Place &item, const QString &folder);

} // namespace FileTree::Native
