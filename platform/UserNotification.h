#pragma once

#include <QString>

/// Shows a notification of the desktop's own, also while the program is in front. Comes back at
/// once; where no notification service answers, nothing is shown.
void deliverUserNotification(const QString &title, const QString &informativeText);
