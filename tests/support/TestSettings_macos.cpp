#include "TestHome.h"

#include <QSettings>

void keepSettingsIn(const QString &folder)
{
    // The native ones are the user's own wherever HOME leads.
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder);
}
