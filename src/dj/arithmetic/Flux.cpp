#include "dj/arithmetic/Flux.h"

#include "mastering/arithmetic/VectorClones.h"

#include <cmath>
#include <utility>

namespace orvane::DJ {

namespace {

constexpr std::size_t laneCount = 8;

/// Replaces `previous` by the magnitudes of `bins`, as pairs of numbers, and returns the weighted sum of what rose.
ORVANE_VECTOR_CLONES
double sumOfRises(const double* __restrict bins, const double* __restrict weights, double* __restrict previous)
{
    alignas(64) double rises[Flux::binCount];
    for (std::size_t bin = 0; bin < Flux::binCount; ++bin) {
        const double real = bins[2 * bin];
        const double imaginary = bins[2 * bin + 1];
        const double magnitude = std::sqrt(real * real + imaginary * imaginary);
        const double rise = magnitude - previous[bin];
        rises[bin] = rise > 0.0 ? weights[bin] * rise : 0.0;
        previous[bin] = magnitude;
    }
    double sums[laneCount] = {};
    for (std::size_t bin = 0; bin < Flux::binCount; bin += laneCount) {
        for (std::size_t lane = 0; lane < laneCount; ++lane)
            sums[lane] += rises[bin + lane];
    }
    return ((sums[0] + sums[4]) + (sums[1] + sums[5])) + ((sums[2] + sums[6]) + (sums[3] + sums[7]));
}

} // namespace

Flux::Flux()
{
    for (std::size_t bin = 0; bin < binCount; ++bin)
        weights_[bin] = 0.25 + 0.75 * double(bin) / double(binCount);
}

double Flux::next(const std::complex<double>* bins)
{
    // The standard lays a complex number out as an array of its two parts.
    const double sum = sumOfRises(reinterpret_cast<const double*>(bins), weights_.data(), previous_.data());
    const bool wasFirst = std::exchange(isFirst_, false);
    return wasFirst ? 0.0 : sum;
}

} // namespace orvane::DJ
