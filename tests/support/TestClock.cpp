#include "tests/support/TestClock.h"

#include <QTimer>
#include <qcoro/qcorotimer.h>

namespace orvane::test {

QCoro::Task<> TestClock::sleep(std::chrono::milliseconds duration)
{
    if (duration.count() <= 0)
        co_return;
    sleeps_.push_back(duration);
    if (onSleep)
        onSleep();
    elapsed_ += duration;
    QTimer turn;
    turn.setSingleShot(true);
    turn.start(0);
    co_await turn;
}

} // namespace orvane::test
