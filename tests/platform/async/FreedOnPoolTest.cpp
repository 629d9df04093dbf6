#include "platform/async/FreedOnPool.h"

#include <QThread>

#include <gtest/gtest.h>
#include <memory>
#include <utility>

namespace orvane {
namespace {

/// Something that notes on which thread its last owner lets go of it.
std::shared_ptr<const int> noting(const QThread*& freedOn)
{
    return {new int(7), [&freedOn](const int* number) {
                freedOn = QThread::currentThread();
                delete number;
            }};
}

TEST(FreedOnPool, letsGoOfItsValueOnAnotherThread)
{
    const QThread* freedOn = nullptr;
    {
        const FreedOnPool<std::shared_ptr<const int>> held(noting(freedOn));
        EXPECT_EQ(**held, 7);
        EXPECT_EQ(held->use_count(), 1);
    }
    QThreadPool::globalInstance()->waitForDone();
    EXPECT_NE(freedOn, nullptr);
    EXPECT_NE(freedOn, QThread::currentThread());
}

TEST(FreedOnPool, leavesAValueToWhoeverStillHoldsIt)
{
    const QThread* freedOn = nullptr;
    std::shared_ptr<const int> alsoHeld = noting(freedOn);
    {
        const FreedOnPool<std::shared_ptr<const int>> held(alsoHeld);
    }
    QThreadPool::globalInstance()->waitForDone();
    EXPECT_EQ(freedOn, nullptr);
    EXPECT_EQ(*alsoHeld, 7);
}

TEST(FreedOnPool, givesAwayWhatIsTakenOutOfIt)
{
    const QThread* freedOn = nullptr;
    std::shared_ptr<const int> taken;
    {
        FreedOnPool<std::shared_ptr<const int>> held(noting(freedOn));
        taken = std::exchange(*held, nullptr);
    }
    QThreadPool::globalInstance()->waitForDone();
    EXPECT_EQ(freedOn, nullptr);
    taken.reset();
    EXPECT_EQ(freedOn, QThread::currentThread());
}

} // namespace
} // namespace orvane
