#pragma once

#include "platform/Result.h"

#include <QSettings>
#include <QVariant>

/// The user's settings, kept from one run to the next. Made afresh at every access and not kept;
/// what was written is on its way to the disk when it goes.
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

    SettingsStore();

    /// An invalid value when the key was never written.
    [[nodiscard]] QVariant object(QLatin1StringView key) const;
    Outcome setObject(const QVariant &value, QLatin1StringView key);
    Outcome removeObject(QLatin1StringView key);

    /// Brings everything to the disk now.
    Outcome synchronize();

private:
    QSettings m_settings;
};
