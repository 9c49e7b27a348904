#include "RunLoop.h"

#include <QEventLoop>
#include <QTimer>

namespace {

std::function<std::chrono::milliseconds(std::chrono::milliseconds)> waitLength;

} // namespace

bool runEventLoopFor(std::chrono::milliseconds duration)
{
    QEventLoop loop;
    constexpr int timeIsUp = 1;
    QTimer::singleShot(waitLength ? waitLength(duration) : duration, Qt::PreciseTimer, &loop,
                       [&loop] { loop.exit(timeIsUp); });
    return loop.exec() == timeIsUp;
}

void setWaitLength(std::function<std::chrono::milliseconds(std::chrono::milliseconds)> length)
{
    waitLength = std::move(length);
}
