#pragma once

#include <limits>

namespace orvane::Master {

/// What stands for a level that does not exist.
inline constexpr double minusInfinity = -std::numeric_limits<double>::infinity();

/// What measuring a signal tells.
struct Reading
{
    /// Gated programme loudness in LUFS; minus infinity when nothing passes the gate.
    double integrated = minusInfinity;
    /// Highest magnitude of the fourfold oversampled signal or of the samples, in dBTP; minus infinity for silence.
    double truePeak = minusInfinity;
    /// Loudness range in LU; 0 when it cannot be formed, never negative.
    double range = 0.0;
    /// Highest magnitude of any sample, in dBFS; minus infinity for silence.
    double samplePeak = minusInfinity;

    bool operator==(const Reading&) const = default;
};

} // namespace orvane::Master
