#include "mastering/arithmetic/PeakKernel.h"

#include "mastering/arithmetic/VectorClones.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace orvane::Master::PeakKernel {

namespace {

/// Eight samples that the processor works on at once, or in two or four goes.
using Lanes [[gnu::vector_size(64)]] = double;
constexpr std::size_t laneCount = 8;

} // namespace

ORVANE_VECTOR_CLONES
double largestMagnitude(const double* samples, std::size_t count)
{
    std::array<double, 4 * laneCount> largest{};
    std::size_t start = 0;
    for (; start + largest.size() <= count; start += largest.size()) {
        for (std::size_t lane = 0; lane < largest.size(); ++lane) {
            const double magnitude = std::fabs(samples[start + lane]);
            largest[lane] = largest[lane] < magnitude ? magnitude : largest[lane];
        }
    }
    for (; start < count; ++start)
        largest[0] = std::max(largest[0], std::fabs(samples[start]));
    return *std::max_element(largest.begin(), largest.end());
}

ORVANE_VECTOR_CLONES
double largestBetween(const double* samples, const Taps& taps)
{
    double largest = 0.0;
    for (std::size_t start = 0; start < blockLength; start += 2 * laneCount) {
        Lanes sums[6] = {};
        for (std::size_t tap = 0; tap < tapCount; ++tap) {
            Lanes low;
            Lanes high;
            std::memcpy(&low, samples + start + tap, sizeof low);
            std::memcpy(&high, samples + start + tap + laneCount, sizeof high);
            sums[0] += low * taps[0][tap];
            sums[1] += high * taps[0][tap];
            sums[2] += low * taps[1][tap];
            sums[3] += high * taps[1][tap];
            sums[4] += low * taps[2][tap];
            sums[5] += high * taps[2][tap];
        }
        double values[6 * laneCount];
        std::memcpy(values, sums, sizeof values);
        for (const double value : values)
            largest = std::max(largest, std::fabs(value));
    }
    return largest;
}

} // namespace orvane::Master::PeakKernel
