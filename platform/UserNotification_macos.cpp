#include "UserNotification.h"

#include <QApplication>
#include <QSystemTrayIcon>
#include <QTimer>

using namespace std::chrono_literals;

namespace {

/// The message of an icon in the menu bar is Qt's way to a user notification. The icon itself has
/// nothing to offer: it leaves as soon as the message has surely been taken over.
class Messenger : public QSystemTrayIcon
{
public:
    explicit Messenger(QObject *parent) : QSystemTrayIcon(QApplication::windowIcon(), parent)
    {
        m_departure.setSingleShot(true);
        m_departure.setInterval(3s);
        m_departure.callOnTimeout(this, &QSystemTrayIcon::hide);
    }

    void deliver(const QString &title, const QString &text)
    {
        show();
        showMessage(title, text, icon());
        m_departure.start();
    }

private:
    QTimer m_departure;
};

} // namespace

void deliverUserNotification(const QString &title, const QString &informativeText)
{
    static auto *messenger = new Messenger(qApp);
    messenger->deliver(title, informativeText);
}
