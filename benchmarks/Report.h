#pragma once

#include <string_view>

namespace orvane::bench {

/// One line of the report without a peer.
void report(std::string_view name, double value, std::string_view unit);

/// One line of the report; the ratio is `value` to `peerValue`.
void report(std::string_view name, double value, std::string_view unit, std::string_view peer, double peerValue);

/// Seconds on a clock that never goes back.
double seconds();

/// Resident memory of this process, in MiB.
double residentMebibytes();

/// The largest resident memory of this process so far, in MiB.
double peakResidentMebibytes();

} // namespace orvane::bench
