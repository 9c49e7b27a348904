#include "TestHome.h"

#include <QSettings>

void keepSettingsIn(const QString &folder)
{
    // XDG_CONFIG_HOME alone would be asked once in the life of a process.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder);
}
