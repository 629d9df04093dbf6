#pragma once

namespace orvane::DJ {

/// The sample rate of every mix, in Hz, whatever its sources have.
inline constexpr double mixRate = 44100.0;

} // namespace orvane::DJ
