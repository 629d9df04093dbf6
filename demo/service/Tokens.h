#pragma once

#include <QByteArray>
#include <QElapsedTimer>

#include <chrono>
#include <mutex>

namespace orvane::demo {

/// Session tokens that rotate: one for each period, good for a minute and at least one period more. Callable from any
/// thread.
class Tokens
{
public:
    /// How long a token stays good behind its period.
    static constexpr std::chrono::milliseconds goodFor{60'000};

    Tokens();

    void setLifetime(std::chrono::milliseconds lifetime);
    QByteArray current() const;
    bool isValid(const QByteArray& token) const;
    /// Makes every token given out so far worthless.
    void expire();

private:
    qint64 period() const;
    QByteArray tokenOf(qint64 period) const;

    mutable std::mutex lock_;
    std::chrono::milliseconds lifetime_{5000};
    QElapsedTimer age_;
    QByteArray secret_;
};

} // namespace orvane::demo
