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
    Lanes largest[2] = {};
    std::size_t start = 0;
    for (; start + 2 * laneCount <= count; start += 2 * laneCount) {
        for (std::size_t half = 0; half < 2; ++half) {
            Lanes values;
            std::memcpy(&values, samples + start + half * laneCount, sizeof values);
            const Lanes magnitudes = values < 0.0 ? -values : values;
            largest[half] = largest[half] < magnitudes ? magnitudes : largest[half];
        }
    }
    largest[0] = largest[0] < largest[1] ? largest[1] : largest[0];
    double result = 0.0;
    for (std::size_t lane = 0; lane < laneCount; ++lane)
        result = std::max(result, largest[0][lane]);
    for (; start < count; ++start)
        result = std::max(result, std::fabs(samples[start]));
    return result;
}

ORVANE_VECTOR_CLONES
void largestOfBlocks(const double* samples, std::size_t blocks, double* largest)
{
    for (std::size_t block = 0; block < blocks; ++block) {
        Lanes magnitudes = {};
        for (std::size_t start = 0; start < blockLength; start += laneCount) {
            Lanes values;
            std::memcpy(&values, samples + block * blockLength + start, sizeof values);
            values = values < 0.0 ? -values : values;
            magnitudes = magnitudes < values ? values : magnitudes;
        }
        double result = magnitudes[0];
        for (std::size_t lane = 1; lane < laneCount; ++lane)
            result = result < magnitudes[lane] ? magnitudes[lane] : result;
        largest[block] = result;
    }
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
