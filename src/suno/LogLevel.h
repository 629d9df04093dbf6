#pragma once

namespace orvane {

/// How a line of a run's log is meant, and coloured.
enum class LogLevel
{
    info,
    success,
    error
};

} // namespace orvane
