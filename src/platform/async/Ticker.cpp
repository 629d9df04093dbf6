#include "platform/async/Ticker.h"

#include <algorithm>
#include <utility>

namespace orvane {

namespace {

/// A timer counts its milliseconds in an int.
constexpr std::chrono::milliseconds longest = std::chrono::days(24);

} // namespace

void SystemTicker::start(std::chrono::milliseconds interval, std::function<void()> tick)
{
    stop();
    QObject::connect(&timer_, &QTimer::timeout, &timer_, std::move(tick));
    timer_.start(std::min(interval, longest));
}

void SystemTicker::stop()
{
    timer_.stop();
    timer_.disconnect();
}

} // namespace orvane
