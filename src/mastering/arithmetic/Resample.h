#pragma once

#include <vector>

namespace orvane::Master {

/// The channel read `ratio` times as fast, by linear interpolation: ratio is its rate over the wanted one. It comes
/// back unchanged for a ratio that is not above 0 or within 0.0001 of 1, and where it or the result has under 2
/// samples. What lies at the last sample or past it stays 0: there is none behind it to draw the line to. Takes about
/// the memory of the longer of the two, since the one goes as the other comes.
std::vector<double> resample(std::vector<double> samples, double ratio);

} // namespace orvane::Master
