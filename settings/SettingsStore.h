#pragma once

#include "platform/Result.h"

#include <QVariant>

/// The user's settings, kept from one run to the next. Nothing is kept here: each call reads or
/// writes what is stored at that moment. What was written is on the disk, or what was there
/// before still is. Two copies of the program do not lose each other's changes.
class SettingsStore
{
public:
    // The backup folder: its path and its own name. The digits belong to the name.
    static constexpr QLatin1StringView theAppBackupPath{"theAppBackupPath"};
    static constexpr QLatin1StringView theFolder8899{"theFolder8899"};
    /// Date and time of the last backup.
    static constexpr QLatin1StringView theLastBackupDate{"theLastBackupDate"};
    /// The history of installations (InstallationRecord.h).
    static constexpr QLatin1StringView installations{"installations"};

    /// An invalid value when the key was never written, or cannot be read.
    [[nodiscard]] QVariant object(QLatin1StringView key) const;

    // Nothing is written when what is there cannot be read.
    Outcome setObject(const QVariant &value, QLatin1StringView key);
    Outcome removeObject(QLatin1StringView key);
    /// Adds to the end of an array, whatever was stored since it was last read.
    Outcome appendObject(const QVariant &object, QLatin1StringView arrayKey);

    /// Forces the store to the disk.
    Outcome synchronize();
};
