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
/// The most that waits: a block but for the last of the samples that lie between its own and the next ones' values.
static_assert(PeakScan::remembered >= PeakKernel::blockLength + reach - 1);

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

/// How many blocks have all that lies between their samples and the next ones made of samples that are there.
std::size_t reachedBlocks(std::size_t samples)
{
    return samples < reach ? 0 : (samples - reach) / PeakKernel::blockLength;
}

double largestOf(std::span<const double> values)
{
    return values.empty() ? 0.0 : *std::max_element(values.begin(), values.end());
}

double samplePeakFrom(std::span<const double> samples, std::span<const double> blocks)
{
    return std::max(largestOf(blocks), largestMagnitude(samples.subspan(blocks.size() * PeakKernel::blockLength)));
}

/// The values at the samples' own positions outside of the blocks 1 to `scanned` - 1; the first and the last
/// `halfReach` samples have none.
double largestAtEdges(std::span<const double> samples, std::size_t scanned)
{
    const std::size_t end = samples.size() - halfReach;
    const std::size_t start = std::min(end, PeakKernel::blockLength);
    const std::size_t rest = std::max(start, scanned * PeakKernel::blockLength);
    return phases().atSample * std::max(largestMagnitude(samples.subspan(halfReach, start - halfReach)),
                                        largestMagnitude(samples.subspan(rest, end - rest)));
}

double largestBetweenOneByOne(std::span<const double> samples, std::size_t position)
{
    double largest = 0.0;
    for (; position < positionCount(samples); ++position) {
        const std::size_t lastPhase = position + reach < samples.size() ? 3 : 2;
        for (std::size_t phase = 1; phase <= lastPhase; ++phase)
            largest = std::max(largest, std::abs(between(samples, position, phase)));
    }
    return largest;
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

void PeakScan::advance(std::span<const double> samples)
{
    constexpr std::size_t length = PeakKernel::blockLength;
    const std::size_t known = blocks_.size();
    blocks_.resize(samples.size() / length);
    PeakKernel::largestOfBlocks(samples.data() + known * length, blocks_.size() - known, blocks_.data() + known);
    scanBetween(samples);
}

/// A block whose samples are too small to reach what has been found is left out: in music that is most of them.
void PeakScan::scanBetween(std::span<const double> samples)
{
    const std::size_t end = reachedBlocks(samples.size());
    const std::size_t first = std::max<std::size_t>(scanned_, 1);
    if (end > first)
        largest_ = std::max(largest_, phases().atSample * largestOf(std::span(blocks_).subspan(first, end - first)));
    for (; scanned_ < end; ++scanned_) {
        if (std::max(blocks_[scanned_], blocks_[scanned_ + 1]) * phases().bound > largest_) {
            const double* start = samples.data() + scanned_ * PeakKernel::blockLength + 1;
            largest_ = std::max(largest_, PeakKernel::largestBetween(start, phases().between));
        }
    }
}

ChannelPeaks PeakScan::finish(std::span<const double> samples)
{
    advance(samples);
    const double samplePeak = samplePeakFrom(samples, blocks_);
    if (samples.size() < reach)
        return {.sample = samplePeak, .oversampled = samplePeak};
    const double rest = largestBetweenOneByOne(samples, scanned_ * PeakKernel::blockLength);
    return {.sample = samplePeak, .oversampled = std::max({largest_, rest, largestAtEdges(samples, scanned_)})};
}

ChannelPeaks scanPeaks(std::span<const double> samples)
{
    return PeakScan().finish(samples);
}

double scanTruePeak(std::span<const double> samples)
{
    return scanPeaks(samples).oversampled;
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

Peaks highestOf(std::span<const ChannelPeaks> channels)
{
    ChannelPeaks highest;
    for (const ChannelPeaks& peaks : channels) {
        highest.sample = std::max(highest.sample, peaks.sample);
        highest.oversampled = std::max(highest.oversampled, peaks.oversampled);
    }
    return {.truePeak = decibels(std::max(highest.sample, highest.oversampled)),
            .samplePeak = decibels(highest.sample)};
}

Peaks peaksOf(const Channels& channels)
{
    std::vector<ChannelPeaks> peaks(channels.size());
    inParallel(channels.size(), processorCount(),
               [&](std::size_t channel) { peaks[channel] = scanPeaks(channels[channel]); });
    return highestOf(peaks);
}

double peakDB(const Channels& channels, double)
{
    return peaksOf(channels).truePeak;
}

double samplePeakDB(const Channels& channels)
{
    return decibels(largestMagnitude(channels));
}

} // namespace orvane::Master
