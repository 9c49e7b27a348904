#include "Focus.h"

#include <QEvent>
#include <QLineEdit>

namespace {

/// Gives a window that comes to the front without a focused control the focus itself.
class WindowsOwnFocus : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *window = static_cast<QWidget *>(watched);
        if (event->type() == QEvent::WindowActivate && !window->focusWidget())
            window->setFocus();
        return false;
    }
};

} // namespace

void setFocusRing(QWidget *control, FocusRing ring)
{
    control->setAttribute(Qt::WA_MacShowFocusRect, ring == FocusRing::Default);
    control->setProperty("focusRing", ring == FocusRing::Default);
}

void makeFirstResponder(QWidget *window, QWidget *control)
{
    if (control && !control->isHidden())
        control->setFocus();
    else if (QWidget *focused = window->focusWidget())
        focused->clearFocus();
}

void forget(QLineEdit *field)
{
    field->setText(QString());
}

void makeKeyAndOrderFront(QWidget *window)
{
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->show();
    window->raise();
    window->activateWindow();
}

void takeFocusOffControls(QWidget *window)
{
    static WindowsOwnFocus instead;
    makeFirstResponder(window, nullptr);
    window->installEventFilter(&instead); // once, however often
}

FocusGuard::FocusGuard(QWidget *window) : m_window(window), m_focused(window->focusWidget()) {}

FocusGuard::~FocusGuard()
{
    if (m_focused && !(m_focused->isEnabled() && m_focused->isVisible()))
        takeFocusOffControls(m_window);
}
