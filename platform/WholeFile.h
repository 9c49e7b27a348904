#pragma once

#include "Result.h"
#include "Stamp.h"

#include <QByteArray>

#include <functional>
#include <optional>

class QIODevice;

/// Which version of which file it is: another one as soon as anybody writes to the file or
/// replaces it.
using FileVersion = FileTree::Stamp;

struct WholeFile
{
    QByteArray content;
    std::optional<FileVersion> version; ///< none when there is no file
};

/// Reads a regular file whole, or fails: a fifo or a device is not waited for. That nothing is
/// there is no failure.
Result<WholeFile> readWholeFile(const QString &path);

/// Told the open file; false when it could not write everything.
using FileWriter = std::function<bool(QIODevice &)>;

/// Replaces a file whole: everything is on the disk before it takes the old one's place, and the
/// name is on the disk when this ends. After a failure the old file stands, but where two files
/// cannot change places: there it is gone when only the flush of the name fails. Answers the new
/// version.
///
/// Of a symbolic link the target is replaced. Permissions, extended attributes and access lists
/// are kept; owner and group too where the user may: another group gets no more than everybody.
/// Refused when the file or its folder is marked read-only, and, as outdated, when the file that is
/// there is not the version that the caller has read; one that went meanwhile is made again.
/// It grows beside the file under a hidden name, ".Brimvale-….partial". A killed program leaves
/// that behind, or the old file under it; both go with a write in the folder a day later. The path
/// is absolute.
Result<FileVersion> writeWholeFile(const QString &path, const std::optional<FileVersion> &version,
                                   const FileWriter &write);
