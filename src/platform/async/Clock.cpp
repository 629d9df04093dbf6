#include "platform/async/Clock.h"

#include <QTimer>
#include <qcoro/qcorotimer.h>

namespace orvane {

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTime();
}

std::chrono::milliseconds SystemClock::monotonic() const
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

QCoro::Task<> SystemClock::sleep(std::chrono::milliseconds duration)
{
    if (duration.count() <= 0)
        co_return;
    QTimer timer;
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    timer.start(duration);
    co_await timer;
}

} // namespace orvane
