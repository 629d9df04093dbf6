#pragma once

#include <cstddef>
#include <vector>

namespace orvane {

/// A Hann window of `length` points, periodic: point n is sqrt(2/3) * (1 - cos(2 pi n / length)), so that its mean
/// square is 1.
std::vector<double> hannWindow(std::size_t length);

} // namespace orvane
