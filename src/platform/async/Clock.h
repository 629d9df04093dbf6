#pragma once

#include <QDateTime>
#include <qcoro/qcorotask.h>

#include <chrono>

namespace orvane {

/// The time of day and the passing of time, handed to whoever waits, so that a test can answer for both.
class Clock
{
public:
    virtual ~Clock() = default;

    /// Local date and time at this moment.
    virtual QDateTime now() const = 0;

    /// Milliseconds on a clock that never goes back; only differences mean anything.
    virtual std::chrono::milliseconds monotonic() const = 0;

    /// Comes back on the calling thread's event loop after `duration`; at once for zero or less.
    virtual QCoro::Task<> sleep(std::chrono::milliseconds duration) = 0;
};

/// The machine's own clock, with timers of the calling thread's event loop.
class SystemClock final : public Clock
{
public:
    QDateTime now() const override;
    std::chrono::milliseconds monotonic() const override;
    QCoro::Task<> sleep(std::chrono::milliseconds duration) override;
};

} // namespace orvane
