#pragma once

#include <QObject>
#include <QTimer>

class QProgressBar;

/// The short animation that follows an action: a bar that goes from 1 to 100, one step a tick, and
/// is empty again at the tick after that.
///
/// All animations count on one counter, which the owner of them all keeps: two that run at once
/// advance it between them, and each stops at the shared limit.
class ProgressAnimation : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ProgressAnimation)

public:
    /// Lives as long as its bar.
    ProgressAnimation(QProgressBar *bar, qint32 &count);

    /// Starts ticking, unless it runs already: then the interval stays too.
    void start(std::chrono::milliseconds interval);
    [[nodiscard]] bool isRunning() const { return m_timer.isActive(); }
    /// One step; true when it was the last one, and the animation has ended.
    [[nodiscard]] bool advance();

Q_SIGNALS:
    void ticked();

private:
    QProgressBar *m_bar;
    qint32 &m_count;
    QTimer m_timer{this};
};
