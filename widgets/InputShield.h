#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QSignalBlocker>

#include <vector>

/// Keeps the windows alive while an action holds the thread for long: while a shield stands, they
/// repaint and answer the desktop, but no input, drop or close request gets through, no button or
/// menu item triggers anything, and no timer of the controller's ticks, so that no other action can
/// run inside this one.
class InputShield : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(InputShield)

public:
    /// The controller is the object that owns the timers to hold back.
    explicit InputShield(QObject *controller);
    ~InputShield() override;

    /// To be called as often as the action can; most calls come back at once.
    void refreshWindows();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QObject *m_controller;
    QElapsedTimer m_sinceRefresh;
    bool m_hasRefreshed = false;
    std::vector<QSignalBlocker> m_silenced;
};
