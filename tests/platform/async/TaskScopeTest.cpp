#include "platform/async/TaskScope.h"

#include "tests/support/TestClock.h"

#include <QTest>

#include <gmock/gmock.h>
#include <memory>
#include <stdexcept>

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

struct Log
{
    int begun = 0;
    int ended = 0;
    bool stopped = false;
};

QCoro::Task<> atOnce(std::shared_ptr<Log> log)
{
    ++log->begun;
    ++log->ended;
    co_return;
}

QCoro::Task<> oneTurn(std::shared_ptr<Log> log)
{
    TestClock clock;
    ++log->begun;
    co_await clock.sleep(1ms);
    ++log->ended;
}

/// Goes on until it is stopped, and then needs some turns to end.
QCoro::Task<> untilStopped(std::shared_ptr<Log> log, std::stop_token stop)
{
    TestClock clock;
    ++log->begun;
    while (!stop.stop_requested())
        co_await clock.sleep(150ms);
    log->stopped = true;
    for (int turn = 0; turn < 5; ++turn)
        co_await clock.sleep(1ms);
    ++log->ended;
}

QCoro::Task<> thrower()
{
    TestClock clock;
    co_await clock.sleep(1ms);
    throw std::runtime_error("nobody hears this");
}

QCoro::Task<> adder(TaskScope* scope, std::shared_ptr<Log> log)
{
    TestClock clock;
    co_await clock.sleep(1ms);
    scope->add(oneTurn(log));
}

struct TaskScopeTest : testing::Test
{
    std::shared_ptr<Log> log = std::make_shared<Log>();
};

TEST_F(TaskScopeTest, countsTheTasksThatHaveNotEnded)
{
    TaskScope scope;
    EXPECT_EQ(scope.running(), 0u);
    scope.add(oneTurn(log));
    scope.add(oneTurn(log));
    EXPECT_EQ(scope.running(), 2u);
    ASSERT_TRUE(QTest::qWaitFor([&] { return scope.running() == 0; }));
    EXPECT_EQ(log->ended, 2);
}

TEST_F(TaskScopeTest, takesATaskThatHasEndedAlready)
{
    TaskScope scope;
    scope.add(atOnce(log));
    EXPECT_EQ(scope.running(), 0u);
    EXPECT_EQ(log->ended, 1);
}

TEST_F(TaskScopeTest, endsWithoutTasksAtOnce)
{
    const TaskScope scope;
    EXPECT_FALSE(scope.stopToken().stop_requested());
}

TEST_F(TaskScopeTest, stopsItsTasksOnRequestAndStaysUsable)
{
    TaskScope scope;
    scope.add(untilStopped(log, scope.stopToken()));
    scope.requestStop();
    EXPECT_TRUE(scope.stopToken().stop_requested());
    ASSERT_TRUE(QTest::qWaitFor([&] { return scope.running() == 0; }));
    EXPECT_TRUE(log->stopped);
}

TEST_F(TaskScopeTest, endsOnlyAfterItsLastTask)
{
    {
        TaskScope scope;
        for (int count = 0; count < 3; ++count)
            scope.add(untilStopped(log, scope.stopToken()));
        EXPECT_EQ(log->begun, 3);
        EXPECT_EQ(log->ended, 0);
    }
    EXPECT_TRUE(log->stopped);
    EXPECT_EQ(log->ended, 3);
}

TEST_F(TaskScopeTest, waitsAlsoForATaskThatIsAddedWhileItEnds)
{
    {
        TaskScope scope;
        scope.add(adder(&scope, log));
    }
    EXPECT_EQ(log->ended, 1);
}

TEST_F(TaskScopeTest, handsOutOneStopForAllItsTasks)
{
    std::stop_token kept;
    {
        const TaskScope scope;
        kept = scope.stopToken();
        EXPECT_EQ(kept, scope.stopToken());
    }
    EXPECT_TRUE(kept.stop_requested());
}

void throwInAScope()
{
    TaskScope scope;
    scope.add(thrower());
}

TEST(TaskScopeDeathTest, endsTheProgramForATaskThatThrows)
{
    EXPECT_EXIT(throwInAScope(), testing::KilledBySignal(SIGABRT), "");
}

} // namespace
} // namespace orvane::test
