#include "mastering/arithmetic/TruePeak.h"

#include "mastering/arithmetic/Decibels.h"
#include "mastering/arithmetic/InParallel.h"
#include "mastering/arithmetic/PeakKernel.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace orvane::Master {

namespace {

constexpr std::size_t factor = 4;
constexpr std::size_t filterLength = 129;
constexpr std::size_t centre = filterLength / 2;
/// Input samples under the filter, and input samples before its centre.
constexpr std::size_t reach = 33;
constexpr std::size_t halfReach = 16;

double windowedSinc(std::size_t index)
{
    constexpr double pi = std::numbers::pi;
    const double x = (double(index) - double(centre)) * pi * 0.25;
    const double sinc = index == centre ? 1.0 : std::sin(x) / x;
    const double turn = 2.0 * pi * double(index) / double(filterLength - 1);
    return sinc * (0.42 - 0.5 * std::cos(turn) + 0.08 * std::cos(2.0 * turn));
}

std::array<double, filterLength> makeTaps()
{
    std::array<double, filterLength> taps;
    for (std::size_t index = 0; index < filterLength; ++index)
        taps[index] = windowedSinc(index);
    const double gain = std::accumulate(taps.begin(), taps.end(), 0.0) / double(factor);
    for (double& tap : taps)
        tap /= gain;
    return taps;
}

/// The filter taken apart by what lies under it where three of four samples are stuffed zeros.
struct Phases
{
    PeakKernel::Taps between;
    /// What a value at a sample's own position is multiplied with; the sinc is 0 at every other sample.
    double atSample;
    /// No value between samples exceeds the largest sample under it times this.
    double bound;
};

double sumOfMagnitudes(const std::array<double, PeakKernel::tapCount>& taps)
{
    return std::accumulate(taps.begin(), taps.end(), 0.0, [](double sum, double tap) { return sum + std::abs(tap); });
}

Phases makePhases()
{
    Phases phases{.between = {}, .atSample = oversamplingTaps()[centre], .bound = 0.0};
    for (std::size_t phase = 1; phase < factor; ++phase) {
        auto& taps = phases.between[phase - 1];
        for (std::size_t tap = 0; tap < taps.size(); ++tap)
            taps[tap] = oversamplingTaps()[filterLength - 1 - factor * (tap + 1) + phase];
        phases.bound = std::max(phases.bound, sumOfMagnitudes(taps) * (1.0 + 1e-9));
    }
    return phases;
}

const Phases& phases()
{
    static const Phases made = makePhases();
    return made;
}

/// The value behind `position`, `phase` quarters on: made of the samples from `position` + 1 on.
double between(std::span<const double> samples, std::size_t position, std::size_t phase)
{
    const auto& taps = phases().between[phase - 1];
    return std::inner_product(taps.begin(), taps.end(), samples.begin() + std::ptrdiff_t(position) + 1, 0.0);
}

/// Positions of the filter's start: all of them have the first two values between samples, all but the last the third.
std::size_t positionCount(std::span<const double> samples)
{
    return samples.size() < reach ? 0 : samples.size() - reach + 1;
}

double largestAtSamples(std::span<const double> samples)
{
    return phases().atSample * largestMagnitude(samples.subspan(halfReach, positionCount(samples)));
}

double largestBetweenOneByOne(std::span<const double> samples, std::size_t position, double largest)
{
    for (; position < positionCount(samples); ++position) {
        const std::size_t lastPhase = position + reach < samples.size() ? 3 : 2;
        for (std::size_t phase = 1; phase <= lastPhase; ++phase)
            largest = std::max(largest, std::abs(between(samples, position, phase)));
    }
    return largest;
}

/// The larger of `largest` and the largest value between samples. A block whose samples are too small to reach
/// `largest` is left out: in music that is most of them.
double largestBetween(std::span<const double> samples, double largest)
{
    constexpr std::size_t length = PeakKernel::blockLength;
    const auto magnitudeFrom = [&](std::size_t start) {
        return PeakKernel::largestMagnitude(samples.data() + start, length);
    };
    std::size_t start = 0;
    double here = samples.size() > 2 * length ? magnitudeFrom(0) : 0.0;
    for (; start + 2 * length < samples.size(); start += length) {
        const double next = magnitudeFrom(start + length);
        if (std::max(here, next) * phases().bound > largest)
            largest = std::max(largest, PeakKernel::largestBetween(samples.data() + start + 1, phases().between));
        here = next;
    }
    return largestBetweenOneByOne(samples, start, largest);
}

} // namespace

const std::array<double, filterLength>& oversamplingTaps()
{
    static const std::array<double, filterLength> taps = makeTaps();
    return taps;
}

std::vector<double> oversample4x(std::span<const double> samples)
{
    std::vector<double> values(samples.size() * factor);
    for (std::size_t position = 0; position < positionCount(samples); ++position) {
        values[position * factor] = phases().atSample * samples[position + halfReach];
        const std::size_t lastPhase = position + reach < samples.size() ? 3 : 2;
        for (std::size_t phase = 1; phase <= lastPhase; ++phase)
            values[position * factor + phase] = between(samples, position, phase);
    }
    return values;
}

double scanTruePeak(std::span<const double> samples)
{
    return truePeakAbove(samples, 0.0);
}

double truePeakAbove(std::span<const double> samples, double floor)
{
    if (samples.size() < reach)
        return std::max(floor, largestMagnitude(samples));
    return largestBetween(samples, std::max(floor, largestAtSamples(samples)));
}

double largestMagnitude(std::span<const double> samples)
{
    return PeakKernel::largestMagnitude(samples.data(), samples.size());
}

double largestMagnitude(const Channels& channels)
{
    double largest = 0.0;
    for (const auto& channel : channels)
        largest = std::max(largest, largestMagnitude(std::span(channel)));
    return largest;
}

double peakDB(const Channels& channels, double)
{
    const double samplePeak = largestMagnitude(channels);
    std::vector<double> peaks(channels.size());
    const auto scan = [&](std::size_t channel) { peaks[channel] = truePeakAbove(channels[channel], samplePeak); };
    inParallel(channels.size(), processorCount(), scan);
    return decibels(peaks.empty() ? 0.0 : *std::max_element(peaks.begin(), peaks.end()));
}

double samplePeakDB(const Channels& channels)
{
    return decibels(largestMagnitude(channels));
}

} // namespace orvane::Master
