#pragma once

#include "dj/arithmetic/Key.h"
#include "platform/transform/RealTransform.h"

#include <array>
#include <cstddef>
#include <span>

namespace orvane::DJ {

/// Samples that one look at the pitches takes.
inline constexpr std::size_t keyWindow = 4096;

/// How much sounds of each pitch class, C first, in any unit.
using Chroma = std::array<double, 12>;

/// The pitches between 55 and 2000 Hz (equal temperament at A = 440) of samples at `rate` Hz (above 0), from a frame of
/// 4096 samples about every half second. Zeros for fewer samples than a frame, or where `transform`, which is
/// `keyWindow` long, is null.
Chroma chromaOf(std::span<const double> samples, double rate, const RealTransform* transform);

/// The key whose profile suits the pitches best (Krumhansl and Kessler's, as plain dot products). Of equally good keys
/// the lowest tonic, and major before minor; C major for no pitch at all.
Key keyOf(const Chroma& chroma);

/// The key of samples at `rate` Hz (above 0); C major where nothing can be heard.
Key key(std::span<const double> samples, double rate);

} // namespace orvane::DJ
