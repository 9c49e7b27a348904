#include "RunLoop.h"

#include <QEventLoop>
#include <QTimer>

void runEventLoopFor(std::chrono::milliseconds duration)
{
    QEventLoop loop;
    QTimer::singleShot(duration, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}
