#pragma once

#include <tuple>
#include <unistd.h>

namespace orvane::test {

/// What the marks look for; no such file exists.
inline constexpr const char* traceMarkName = "orvane-trace-mark";

/// Shows up in the trace of system calls: what lies between two marks is what a test breaks.
inline void markTrace()
{
    std::ignore = ::access(traceMarkName, F_OK);
}

} // namespace orvane::test
