#pragma once

#include <QObject>

class QAction;
class QWidget;

/// Keeps a menu item as its control is: it can be chosen while the control is on screen and
/// enabled. Owned by the item.
class MenuFollower : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(MenuFollower)

public:
    MenuFollower(QAction *item, QWidget *control);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void follow();

    QAction *m_item;
    QWidget *m_control;
};
