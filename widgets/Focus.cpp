#include "Focus.h"

#include <QLineEdit>

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
