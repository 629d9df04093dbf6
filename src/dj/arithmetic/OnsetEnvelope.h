#pragma once

#include "platform/transform/RealTransform.h"

#include <cstddef>
#include <span>
#include <vector>

namespace orvane::DJ {

/// Samples from one value of an onset envelope to the next. A position in an envelope is counted in such frames, of
/// which there are `frameRate` in a second.
inline constexpr std::size_t hop = 512;

/// Samples that one value of an onset envelope looks at.
inline constexpr std::size_t onsetWindow = 1024;

/// Envelope values in a second of sound at `rate` Hz.
inline double frameRate(double rate)
{
    return rate / double(hop);
}

/// How strongly sound sets in, one value of 0 and more for each whole frame of 1024 samples, a frame every `hop`: the
/// half-wave rectified spectral flux under a Hann window, where high frequencies count more. The first value is 0. No
/// value for 1024 samples or fewer. `rate` in Hz does not enter.
std::vector<double> onsetEnvelope(std::span<const double> samples, double rate);

/// As above by `transform`, which is `onsetWindow` long; no value where it is null.
std::vector<double> onsetEnvelope(std::span<const double> samples, const RealTransform* transform);

} // namespace orvane::DJ
