#pragma once

#include <cstddef>
#include <span>

namespace orvane::Video {

/// The bin that bar `bar` of `bars` shows, of a spectrum of `binCount` values: spaced by the logarithm, from bin 1 to
/// 0.72 of the spectrum. Bins between two bars are passed over, and the lowest bars share one. 0 for an empty spectrum.
std::size_t binOfBar(std::size_t bar, std::size_t bars, std::size_t binCount);

/// How strong the low end is, from 0 to 1: the mean of the lowest third of the spectrum, 0 where that is empty.
float energy(std::span<const float> spectrum);

} // namespace orvane::Video
