#include "mastering/arithmetic/Loudness.h"

#include "mastering/arithmetic/InParallel.h"
#include "mastering/arithmetic/WindowEnergy.h"

#include <algorithm>
#include <cmath>

namespace orvane::Master {

namespace {

constexpr double offset = -0.691;
constexpr double absoluteGate = -70.0;
constexpr double relativeGate = -10.0;
constexpr double rangeGate = -20.0;

double energyOfLoudness(double loudness)
{
    return std::pow(10.0, (loudness - offset) / 10.0);
}

/// The loudness of the mean energy of what `isKept` keeps; minus infinity when it keeps nothing.
template <typename Kept>
double meanLoudness(std::span<const double> values, Kept isKept)
{
    double sum = 0.0;
    std::size_t count = 0;
    for (const double value : values) {
        if (isKept(value)) {
            sum += energyOfLoudness(value);
            ++count;
        }
    }
    return count > 0 ? loudnessOfEnergy(sum / double(count)) : minusInfinity;
}

/// Adds up the channels' mean squares by weight; the first channel says how many windows there are.
std::vector<double> loudnesses(const std::vector<std::vector<double>>& meanSquares)
{
    std::vector<double> sums(meanSquares.empty() ? 0 : meanSquares.front().size());
    for (std::size_t channel = 0; channel < meanSquares.size(); ++channel) {
        const double channelWeight = weight(channel, meanSquares.size());
        for (std::size_t window = 0; channelWeight > 0.0 && window < sums.size(); ++window)
            sums[window] += channelWeight * meanSquares[channel][window];
    }
    std::transform(sums.begin(), sums.end(), sums.begin(), loudnessOfEnergy);
    return sums;
}

double percentile(std::span<const double> sorted, double share)
{
    return sorted[std::size_t(std::round(double(sorted.size() - 1) * share))];
}

/// What one kind of mean squares comes to, over all channels.
template <typename MeanSquares>
std::vector<double> loudnessesOf(const std::vector<ChannelMeter>& meters, MeanSquares meanSquares)
{
    std::vector<std::vector<double>> channels;
    for (const ChannelMeter& meter : meters)
        channels.push_back((meter.*meanSquares)());
    return loudnesses(channels);
}

Reading readingOf(const std::vector<ChannelMeter>& meters, const Peaks& peaks)
{
    Reading reading{.integrated = gatedLoudness(loudnessesOf(meters, &ChannelMeter::blocks)),
                    .truePeak = peaks.truePeak,
                    .range = 0.0,
                    .samplePeak = peaks.samplePeak};
    if (std::isfinite(reading.integrated))
        reading.range = loudnessRange(loudnessesOf(meters, &ChannelMeter::windows));
    return reading;
}

/// Meters that have weighed the whole signal, and not scanned it for peaks.
std::vector<ChannelMeter> weighed(const Channels& channels, double sampleRate)
{
    std::vector<ChannelMeter> meters = metersFor(channels.size(), sampleRate);
    inParallel(meters.size(), processorCount(),
               [&](std::size_t channel) { meters[channel].finishWeighing(channels[channel]); });
    return meters;
}

Peaks peaksFrom(const std::vector<ChannelMeter>& meters)
{
    std::vector<ChannelPeaks> peaks;
    for (const ChannelMeter& meter : meters)
        peaks.push_back(meter.peaks());
    return highestOf(peaks);
}

} // namespace

double weight(std::size_t channel, std::size_t count)
{
    constexpr double surround = 1.41;
    const std::size_t fronts = count == 4 ? 2 : 3;
    if (channel < fronts)
        return 1.0;
    return count >= 6 && channel == 3 ? 0.0 : surround;
}

double loudnessOfEnergy(double energy)
{
    return 10.0 * std::log10(energy) + offset;
}

double gatedLoudness(std::span<const double> blocks)
{
    const auto isAudible = [](double block) { return block > absoluteGate; };
    const double threshold = meanLoudness(blocks, isAudible) + relativeGate;
    // The loudest block always lies above the threshold, so that something is left where anything was audible.
    return meanLoudness(blocks, [&](double block) { return isAudible(block) && block > threshold; });
}

std::vector<double> shortTerm(const Channels& weighted, double sampleRate)
{
    std::vector<std::vector<double>> meanSquares;
    for (const auto& channel : weighted) {
        WindowEnergy windows(shortTermWindows(sampleRate));
        windows.add(channel);
        meanSquares.push_back(windows.meanSquares());
    }
    return loudnesses(meanSquares);
}

double loudnessRange(std::span<const double> shortTermLoudness)
{
    const auto isAudible = [](double value) { return value >= absoluteGate; };
    const double threshold = meanLoudness(shortTermLoudness, isAudible) + rangeGate;
    std::vector<double> kept;
    std::copy_if(shortTermLoudness.begin(), shortTermLoudness.end(), std::back_inserter(kept),
                 [&](double value) { return isAudible(value) && threshold <= value; });
    if (kept.size() < 2)
        return 0.0;
    std::sort(kept.begin(), kept.end());
    return percentile(kept, 0.95) - percentile(kept, 0.1);
}

Reading measure(const Channels& channels, double sampleRate)
{
    return measure(channels, sampleRate, Threads::All);
}

Reading measure(const Channels& channels, double sampleRate, Threads threads)
{
    std::vector<ChannelMeter> meters = metersFor(channels.size(), sampleRate);
    return finish(meters, channels, threads);
}

double integratedLoudness(const Channels& channels, double sampleRate)
{
    if (isEmpty(channels))
        return minusInfinity;
    return gatedLoudness(loudnessesOf(weighed(channels, sampleRate), &ChannelMeter::blocks));
}

Reading measureBeside(const Peaks& peaks, const Channels& channels, double sampleRate)
{
    if (isEmpty(channels))
        return {};
    return readingOf(weighed(channels, sampleRate), peaks);
}

std::vector<ChannelMeter> metersFor(std::size_t count, double sampleRate)
{
    std::vector<ChannelMeter> meters;
    for (std::size_t channel = 0; channel < count; ++channel)
        meters.emplace_back(sampleRate, weight(channel, count) > 0.0);
    return meters;
}

Reading finish(std::vector<ChannelMeter>& meters, const Channels& channels, Threads threads)
{
    if (isEmpty(channels))
        return {};
    const std::size_t count = meters.size();
    const auto examine = [&](std::size_t job) {
        if (job < count)
            meters[job].finishWeighing(channels[job]);
        else
            meters[job - count].finishScan(channels[job - count]);
    };
    inParallel(2 * count, threads == Threads::One ? 1 : processorCount(), examine);
    return readingOf(meters, peaksFrom(meters));
}

} // namespace orvane::Master
