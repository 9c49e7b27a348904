#pragma once

#include <QMap>
#include <QStringList>

#include <chrono>
#include <functional>

/// What is in a folder that is to become a template, read from the disk.
struct TemplateFolder
{
    enum class Kind { Missing, File, Folder };

    Kind kind = Kind::Missing;
    QMap<QString, int> motionFiles; ///< how many, by extension
    qint64 bytes = 0;               ///< of all regular files
    bool isWhole = true;            ///< false: there is more than was counted
    QStringList pictures;           ///< paths of the template's own pictures, the best one first
};

/// How much of a folder is read; what lies beyond stays uncounted.
struct ReadingLimits
{
    int items = 50'000;
    std::chrono::milliseconds time = std::chrono::seconds(2);
};

/// Reads a folder and all folders in it; no symbolic link inside is followed. May be called in any
/// thread, and ends early when `isCancelled` says so.
TemplateFolder readTemplateFolder(const QString &path,
                                  const std::function<bool()> &isCancelled = {},
                                  const ReadingLimits &limits = {});

/// The extension of the Motion files that say most of what the folder is; empty without any.
QString mainExtension(const TemplateFolder &folder);

/// The folder in words: "1 Title, 3.4 MB".
QString contentsText(const TemplateFolder &folder);
