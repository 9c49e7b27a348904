#include "BrimvaleAppDelegate.h"

/// Starts the repeating timer, unless that animation runs already.
void BrimvaleAppDelegate::startAnimation(QTimer *&slot, std::chrono::milliseconds interval,
                                         Animation tick)
{
    if (slot)
        return;
    slot = new QTimer(this);
    slot->setTimerType(Qt::PreciseTimer);
    connect(slot, &QTimer::timeout, this, tick);
    slot->start(interval);
}

/// One step; true when it was the last one, and the timer is gone. Both animations share the
/// counter, and each stops at its limit.
bool BrimvaleAppDelegate::advanceAnimation(QTimer *&slot, QProgressBar *bar)
{
    constexpr int steps = 100;
    const qint32 n = count++;
    if (n < steps) {
        bar->setValue(n + 1);
        return false;
    }
    count = 0;
    slot->stop();
    slot->deleteLater();
    slot = nullptr;
    bar->setValue(0);
    return true;
}
