#include "video/arithmetic/Spectrum.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace orvane::Video {

std::size_t binOfBar(std::size_t bar, std::size_t bars, std::size_t binCount)
{
    if (binCount == 0)
        return 0;
    const double exponent = double(bar) / double(std::max<std::size_t>(bars, 2) - 1);
    return std::min(binCount - 1, std::size_t(std::pow(0.72 * double(binCount), exponent)));
}

float energy(std::span<const float> spectrum)
{
    const std::size_t count = spectrum.size() / 3;
    if (count == 0)
        return 0.0F;
    const auto low = spectrum.first(count);
    return std::accumulate(low.begin(), low.end(), 0.0F) / float(count);
}

} // namespace orvane::Video
