#include "RunLoop.h"

#include <QEventLoop>
#include <QTimer>

bool runEventLoopFor(std::chrono::milliseconds duration)
{
    QEventLoop loop;
    constexpr int timeIsUp = 1;
    QTimer::singleShot(duration, Qt::PreciseTimer, &loop, [&loop] { loop.exit(timeIsUp); });
    return loop.exec() == timeIsUp;
}
