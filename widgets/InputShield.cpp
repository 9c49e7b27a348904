#include "InputShield.h"

#include "ProgressAnimation.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QSet>

InputShield::InputShield()
{
    qApp->installEventFilter(this);
    // A menu of the desktop's own and a screen reader trigger without any input event.
    // Each once: a second blocker would restore what the first one had set.
    QSet<QObject *> triggers;
    for (QWidget *widget : QApplication::allWidgets()) {
        if (qobject_cast<QAbstractButton *>(widget))
            triggers.insert(widget);
        for (QAction *item : widget->actions())
            triggers.insert(item);
    }
    for (QObject *trigger : std::as_const(triggers))
        m_silenced.emplace_back(trigger);
    m_sinceRefresh.start();
}

InputShield::~InputShield()
{
    if (m_hasRefreshed)
        QCoreApplication::processEvents(); // what was pressed meanwhile was pressed in vain
}

void InputShield::refreshWindows()
{
    constexpr qint64 interval = 40; // milliseconds: 25 pictures a second
    if (m_sinceRefresh.elapsed() < interval)
        return;
    QCoreApplication::processEvents();
    m_sinceRefresh.restart();
    m_hasRefreshed = true;
}

bool InputShield::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::Close:
        event->ignore();
        return true;
    case QEvent::Timer:
        return qobject_cast<ProgressAnimation *>(watched->parent()) != nullptr;
    default:
        return false;
    }
}
