#include "UserNotification.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

void deliverUserNotification(const QString &title, const QString &informativeText)
{
    // Nobody is asked first whether the service runs: it starts on demand, and asking would wait.
    QDBusMessage notify = QDBusMessage::createMethodCall(
        u"org.freedesktop.Notifications"_s, u"/org/freedesktop/Notifications"_s,
        u"org.freedesktop.Notifications"_s, u"Notify"_s);
    constexpr uint replacesNothing = 0;
    constexpr int serversOwnTimeout = -1;
    const QVariantMap hints{{u"desktop-entry"_s, QGuiApplication::desktopFileName()}};
    notify << QGuiApplication::applicationName() << replacesNothing << u"brimvale"_s << title
           << informativeText << QStringList() << hints << serversOwnTimeout;
    QDBusConnection::sessionBus().asyncCall(notify);
}
