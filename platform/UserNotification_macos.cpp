#include "UserNotification.h"

#include <QApplication>
#include <QSystemTrayIcon>

void deliverUserNotification(const QString &title, const QString &informativeText)
{
    // On macOS a tray icon's message is a user notification.
    static auto *tray = new QSystemTrayIcon(QApplication::windowIcon(), qApp);
    tray->show();
    tray->showMessage(title, informativeText, QApplication::windowIcon());
}
