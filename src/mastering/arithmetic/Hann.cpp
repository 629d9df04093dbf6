#include "mastering/arithmetic/Hann.h"

#include <cmath>
#include <numbers>

namespace orvane {

std::vector<double> hannWindow(std::size_t length)
{
    std::vector<double> window(length);
    for (std::size_t point = 0; point < length; ++point) {
        const double turn = 2.0 * std::numbers::pi * double(point) / double(length);
        window[point] = std::sqrt(2.0 / 3.0) * (1.0 - std::cos(turn));
    }
    return window;
}

} // namespace orvane
