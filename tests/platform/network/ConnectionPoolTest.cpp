#include "platform/network/ConnectionPool.h"

#include <QCoreApplication>
#include <QPointer>

#include <gmock/gmock.h>
#include <memory>

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

// What a pool that is gone would be asked for, the tests under sanitizers see.
TEST(ConnectionPool, isLeftAloneByAConnectionThatOutlivesIt)
{
    auto pool = std::make_unique<ConnectionPool>(nullptr, 0ms);
    const QPointer<Connection> connection = new Connection(Origin());
    pool->give(ConnectionPointer(connection));
    pool.reset();
    // Its time in the pool is over now, while it still waits for its deletion.
    QCoreApplication::processEvents();
    EXPECT_TRUE(connection);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(connection);
}

TEST(ConnectionPool, letsGoOfAConnectionWhenItsTimeIsOver)
{
    ConnectionPool pool(nullptr, 0ms);
    const QPointer<Connection> connection = new Connection(Origin());
    pool.give(ConnectionPointer(connection));
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(connection);
}

} // namespace
} // namespace orvane::test
