#pragma once

#include "platform/FileDescriptor.h"

#include <QString>

/// One program at a time changes the settings in this folder. The system takes the lock back when
/// its holder ends, however that ends. Whoever holds it longer than a second has stopped: it is
/// not waited for any longer.
class SettingsLock
{
public:
    explicit SettingsLock(const QString &folder);

private:
    FileDescriptor m_folder;
};
