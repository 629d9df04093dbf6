#include "dj/arithmetic/Energy.h"

#include "mastering/arithmetic/VectorClones.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace orvane::DJ {

namespace {

constexpr double quietest = -30.0;
constexpr double span = 24.0;
constexpr double leastPower = 1e-12;
constexpr std::size_t laneCount = 16;

ORVANE_VECTOR_CLONES
double sumOfSquares(const double* samples, std::size_t count)
{
    double sums[laneCount] = {};
    std::size_t start = 0;
    for (; start + laneCount <= count; start += laneCount) {
        for (std::size_t lane = 0; lane < laneCount; ++lane)
            sums[lane] += samples[start + lane] * samples[start + lane];
    }
    double sum = 0.0;
    for (const double value : sums)
        sum += value;
    for (; start < count; ++start)
        sum += samples[start] * samples[start];
    return sum;
}

} // namespace

double energy(std::span<const double> samples)
{
    if (samples.empty())
        return 0.0;
    const double power = sumOfSquares(samples.data(), samples.size()) / double(samples.size());
    return std::clamp((10.0 * std::log10(std::max(power, leastPower)) - quietest) / span, 0.0, 1.0);
}

} // namespace orvane::DJ
