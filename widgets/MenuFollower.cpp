#include "MenuFollower.h"

#include <QAction>
#include <QEvent>
#include <QWidget>

MenuFollower::MenuFollower(QAction *item, QWidget *control)
    : QObject(item), m_item(item), m_control(control)
{
    control->installEventFilter(this);
    follow();
}

bool MenuFollower::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::EnabledChange:
    case QEvent::Show:
    case QEvent::Hide:
        follow();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void MenuFollower::follow()
{
    m_item->setEnabled(m_control->isEnabled() && m_control->isVisible());
}
