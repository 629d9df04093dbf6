#pragma once

#include <QTimer>

#include <chrono>
#include <functional>

namespace orvane {

/// A repeating signal, handed to whoever does something every so often, so that a test can give it.
class Ticker
{
public:
    virtual ~Ticker() = default;

    /// Calls `tick` on the calling thread's event loop every `interval`, in place of what was started before. An
    /// interval of more than 24 days counts as 24 days.
    virtual void start(std::chrono::milliseconds interval, std::function<void()> tick) = 0;

    /// Ends it; nothing is called from here on.
    virtual void stop() = 0;
};

/// The ticks of a timer.
class SystemTicker final : public Ticker
{
public:
    void start(std::chrono::milliseconds interval, std::function<void()> tick) override;
    void stop() override;

private:
    QTimer timer_;
};

} // namespace orvane
