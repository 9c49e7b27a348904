#include "ProgressAnimation.h"

#include <QProgressBar>

ProgressAnimation::ProgressAnimation(QProgressBar *bar, qint32 &count)
    : QObject(bar), m_bar(bar), m_count(count)
{
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &ProgressAnimation::ticked);
}

void ProgressAnimation::start(std::chrono::milliseconds interval)
{
    if (!m_timer.isActive())
        m_timer.start(interval);
}

bool ProgressAnimation::advance()
{
    constexpr int steps = 100;
    const qint32 n = m_count++;
    if (n < steps) {
        m_bar->setValue(n + 1);
        return false;
    }
    m_count = 0;
    m_timer.stop();
    m_bar->setValue(0);
    return true;
}
