#pragma once

#include "platform/async/Ticker.h"

#include <optional>
#include <utility>

namespace orvane::test {

/// A ticker that ticks when the test says so.
class ManualTicker final : public Ticker
{
public:
    void start(std::chrono::milliseconds interval, std::function<void()> tick) override
    {
        interval_ = interval;
        tick_ = std::move(tick);
    }

    void stop() override
    {
        interval_.reset();
        tick_ = nullptr;
    }

    /// Absent while it is stopped.
    std::optional<std::chrono::milliseconds> interval() const { return interval_; }

    /// One tick, if it is started.
    void tick()
    {
        if (const auto now = tick_)
            now();
    }

private:
    std::optional<std::chrono::milliseconds> interval_;
    std::function<void()> tick_;
};

} // namespace orvane::test
