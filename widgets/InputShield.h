#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QSignalBlocker>

#include <vector>

/// Keeps the windows alive while an action holds the thread for long: while a shield stands, they
/// repaint and answer the desktop, but no input, drop or close request gets through, no button or
/// menu item triggers anything, and no progress animation ticks, so that no other action can run
/// inside this one.
class InputShield : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(InputShield)

public:
    InputShield();
    ~InputShield() override;

    /// To be called as often as the action can; most calls come back at once.
    void refreshWindows();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QElapsedTimer m_sinceRefresh;
    bool m_hasRefreshed = false;
    std::vector<QSignalBlocker> m_silenced;
};
