#include "platform/async/Clock.h"

#include <QTest>
#include <QThread>
#include <QTimer>

#include <gmock/gmock.h>
#include <memory>
#include <stdexcept>
#include <string>

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

struct Sleeper
{
    bool awake = false;
    QThread* thread = nullptr;
};

QCoro::Task<> sleepOnce(std::shared_ptr<Sleeper> sleeper, std::chrono::milliseconds duration)
{
    SystemClock clock;
    co_await clock.sleep(duration);
    sleeper->thread = QThread::currentThread();
    sleeper->awake = true;
}

QCoro::Task<> sleepAndThrow()
{
    SystemClock clock;
    co_await clock.sleep(1ms);
    throw std::runtime_error("after the sleep");
}

QCoro::Task<> catchWhatIsThrown(std::shared_ptr<std::string> caught)
{
    try {
        co_await sleepAndThrow();
    } catch (const std::runtime_error& error) {
        *caught = error.what();
    }
}

TEST(SystemClock, tellsTheTimeOfDayOfTheMachine)
{
    const SystemClock clock;
    const QDateTime before = QDateTime::currentDateTime();
    const QDateTime now = clock.now();
    EXPECT_LE(before, now);
    EXPECT_LE(now, QDateTime::currentDateTime());
    EXPECT_EQ(now.timeSpec(), Qt::LocalTime);
}

TEST(SystemClock, neverGoesBack)
{
    const SystemClock clock;
    std::chrono::milliseconds last = clock.monotonic();
    for (int look = 0; look < 10'000; ++look) {
        const std::chrono::milliseconds next = clock.monotonic();
        ASSERT_GE(next, last);
        last = next;
    }
}

TEST(SystemClock, comesBackAtOnceFromASleepOfNothing)
{
    for (const std::chrono::milliseconds duration : {0ms, -5ms, std::chrono::milliseconds::min()}) {
        const auto sleeper = std::make_shared<Sleeper>();
        const QCoro::Task<> task = sleepOnce(sleeper, duration);
        EXPECT_TRUE(sleeper->awake) << duration.count();
    }
}

TEST(SystemClock, comesBackFromASleepOnItsThreadsEventLoop)
{
    const auto sleeper = std::make_shared<Sleeper>();
    const QCoro::Task<> task = sleepOnce(sleeper, 1ms);
    EXPECT_FALSE(sleeper->awake);
    ASSERT_TRUE(QTest::qWaitFor([&] { return sleeper->awake; }));
    EXPECT_EQ(sleeper->thread, QThread::currentThread());
}

TEST(SystemClock, letsTheEventLoopTurnWhileItSleeps)
{
    const auto sleeper = std::make_shared<Sleeper>();
    bool turned = false;
    bool turnedFirst = false;
    const QCoro::Task<> task = sleepOnce(sleeper, 20ms);
    QTimer::singleShot(0, [&] {
        turned = true;
        turnedFirst = !sleeper->awake;
    });
    ASSERT_TRUE(QTest::qWaitFor([&] { return turned && sleeper->awake; }));
    EXPECT_TRUE(turnedFirst);
}

TEST(SystemClock, letsManySleepAtOnce)
{
    const auto sleeper = std::make_shared<Sleeper>();
    const auto other = std::make_shared<Sleeper>();
    const QCoro::Task<> longer = sleepOnce(sleeper, 10ms);
    const QCoro::Task<> shorter = sleepOnce(other, 1ms);
    EXPECT_TRUE(QTest::qWaitFor([&] { return sleeper->awake && other->awake; }));
}

TEST(SystemClock, passesOnWhatIsThrownAfterASleep)
{
    const auto caught = std::make_shared<std::string>();
    QCoro::waitFor(catchWhatIsThrown(caught));
    EXPECT_EQ(*caught, "after the sleep");
}

} // namespace
} // namespace orvane::test
