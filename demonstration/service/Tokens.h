#pragma once

#include <QByteArray>

#include <chrono>
#include <functional>
#include <mutex>

namespace orvane::demo {

/// Session tokens that rotate: one for each period, good for a minute and at least one period more. Callable from any
/// thread.
class Tokens
{
public:
    /// How long a token stays good behind its period: a pane takes a new one every 20 seconds only.
    static constexpr std::chrono::milliseconds goodFor{60'000};

    /// Time since any fixed moment, never going back.
    using Watch = std::function<std::chrono::milliseconds()>;

    /// The machine's own watch.
    static std::chrono::milliseconds machineTime();

    explicit Tokens(Watch watch = machineTime);

    /// Length of the periods from now on; the present one begins anew and keeps its token. At least a millisecond.
    void setLifetime(std::chrono::milliseconds lifetime);
    QByteArray current() const;
    bool isValid(const QByteArray& token) const;
    /// Makes every token given out so far worthless.
    void expire();

private:
    qint64 period() const;
    QByteArray tokenOf(qint64 period) const;

    mutable std::mutex lock_;
    Watch watch_;
    std::chrono::milliseconds lifetime_{5000};
    /// When the lifetime was set, and the period of that moment.
    std::chrono::milliseconds start_;
    qint64 firstPeriod_ = 0;
    QByteArray secret_;
};

} // namespace orvane::demo
