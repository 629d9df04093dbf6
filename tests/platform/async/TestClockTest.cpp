#include "tests/support/TestClock.h"

#include <qcoro/qcorotask.h>

#include <gmock/gmock.h>

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

QCoro::Task<> sleepTwice(TestClock* clock)
{
    co_await clock->sleep(150ms);
    co_await clock->sleep(1h);
}

TEST(TestClock, writesSleepsDownAndTurnsByTheirLength)
{
    TestClock clock;
    const QDateTime start = clock.now();
    QCoro::waitFor(sleepTwice(&clock));
    EXPECT_THAT(clock.sleeps(), testing::ElementsAre(150ms, std::chrono::milliseconds(1h)));
    EXPECT_EQ(clock.slept(), 1h + 150ms);
    EXPECT_EQ(clock.monotonic(), 1h + 150ms);
    EXPECT_EQ(clock.now(), start.addMSecs(3'600'150));
}

TEST(TestClock, tellsOfASleepBeforeItPasses)
{
    TestClock clock;
    QList<qint64> at;
    clock.onSleep = [&] { at.append(clock.monotonic().count()); };
    QCoro::waitFor(sleepTwice(&clock));
    EXPECT_EQ(at, (QList<qint64>{0, 150}));
}

TEST(TestClock, doesNotCountASleepOfNothing)
{
    TestClock clock;
    QCoro::waitFor(clock.sleep(0ms));
    QCoro::waitFor(clock.sleep(-1ms));
    EXPECT_TRUE(clock.sleeps().empty());
}

} // namespace
} // namespace orvane::test
