#pragma once

#include "platform/async/Clock.h"

#include <functional>
#include <vector>

namespace orvane::test {

/// A clock that the test turns: a sleep ends after one turn of the event loop, moves the clock by its length and is
/// written down.
class TestClock final : public Clock
{
public:
    QDateTime now() const override { return start_.addMSecs(elapsed_.count()); }

    std::chrono::milliseconds monotonic() const override { return elapsed_; }

    QCoro::Task<> sleep(std::chrono::milliseconds duration) override;

    /// Lets time go by without a sleep.
    void pass(std::chrono::milliseconds duration) { elapsed_ += duration; }

    /// Every sleep in order.
    const std::vector<std::chrono::milliseconds>& sleeps() const { return sleeps_; }

    /// Their sum, and what went by besides.
    std::chrono::milliseconds slept() const { return elapsed_; }

    void forget() { sleeps_.clear(); }

    /// Called at the start of each sleep.
    std::function<void()> onSleep;

private:
    QDateTime start_{QDate(2026, 1, 2), QTime(3, 4, 5)};
    std::chrono::milliseconds elapsed_{0};
    std::vector<std::chrono::milliseconds> sleeps_;
};

} // namespace orvane::test
