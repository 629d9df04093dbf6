#pragma once

#include <QString>

#include <algorithm>
#include <chrono>

namespace orvane {

/// A wait as a log line tells it: whole seconds, at least 1.
inline QString wholeSeconds(std::chrono::milliseconds wait)
{
    return QString::number(std::max<qint64>(1, std::chrono::duration_cast<std::chrono::seconds>(wait).count()));
}

} // namespace orvane
