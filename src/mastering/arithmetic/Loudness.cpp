#include "mastering/arithmetic/Loudness.h"

#include "mastering/arithmetic/Biquad.h"
#include "mastering/arithmetic/InParallel.h"
#include "mastering/arithmetic/WindowEnergy.h"

#include <algorithm>
#include <array>
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

std::size_t wholeFrames(double frames)
{
    return std::size_t(std::max(frames, 0.0));
}

Windows blocksAt(double sampleRate)
{
    const std::size_t length = wholeFrames(0.4 * sampleRate);
    return {.length = length, .hop = length / 4};
}

Windows shortTermWindowsAt(double sampleRate)
{
    return {.length = wholeFrames(3.0 * sampleRate), .hop = wholeFrames(0.1 * sampleRate)};
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

/// What one channel's K-weighted samples say, without keeping them.
struct ChannelEnergy
{
    WindowEnergy blocks;
    WindowEnergy windows;
};

ChannelEnergy weigh(std::span<const double> samples, double sampleRate)
{
    ChannelEnergy energy{.blocks = WindowEnergy(blocksAt(sampleRate)),
                         .windows = WindowEnergy(shortTermWindowsAt(sampleRate))};
    Biquad shelf = Biquad::kWeightingStage1(sampleRate);
    Biquad highPass = Biquad::kWeightingStage2(sampleRate);
    std::array<double, 1024> piece;
    while (!samples.empty()) {
        const std::span<double> weighted(piece.data(), std::min(piece.size(), samples.size()));
        std::copy_n(samples.begin(), weighted.size(), weighted.begin());
        shelf.filter(weighted);
        highPass.filter(weighted);
        energy.blocks.add(weighted);
        energy.windows.add(weighted);
        samples = samples.subspan(weighted.size());
    }
    return energy;
}

/// The mean squares of a signal's windows, channel by channel; none for a channel that does not count.
struct Energies
{
    explicit Energies(std::size_t channels)
        : blocks(channels)
        , windows(channels)
    {
    }

    void weighChannel(const Channels& channels, std::size_t channel, double sampleRate)
    {
        if (!(weight(channel, channels.size()) > 0.0))
            return;
        const ChannelEnergy energy = weigh(channels[channel], sampleRate);
        blocks[channel] = energy.blocks.meanSquares();
        windows[channel] = energy.windows.meanSquares();
    }

    std::vector<std::vector<double>> blocks;
    std::vector<std::vector<double>> windows;
};

Reading readingOf(const Energies& energies, const Peaks& peaks)
{
    Reading reading{.integrated = gatedLoudness(loudnesses(energies.blocks)),
                    .truePeak = peaks.truePeak,
                    .range = 0.0,
                    .samplePeak = peaks.samplePeak};
    if (std::isfinite(reading.integrated))
        reading.range = loudnessRange(loudnesses(energies.windows));
    return reading;
}

} // namespace

double weight(std::size_t channel, std::size_t count)
{
    constexpr double surround = 1.41;
    if (count <= 3)
        return 1.0;
    if (count == 4)
        return channel < 2 ? 1.0 : surround;
    if (channel < 3)
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
        WindowEnergy windows(shortTermWindowsAt(sampleRate));
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
    if (isEmpty(channels))
        return {};
    const std::size_t count = channels.size();
    Energies energies(count);
    std::vector<ChannelPeaks> peaks(count);
    const auto examine = [&](std::size_t job) {
        if (job < count)
            energies.weighChannel(channels, job, sampleRate);
        else
            peaks[job - count] = scanPeaks(channels[job - count]);
    };
    inParallel(2 * count, threads == Threads::One ? 1 : processorCount(), examine);
    return readingOf(energies, highestOf(peaks));
}

Reading measureBeside(const Peaks& peaks, const Channels& channels, double sampleRate)
{
    if (isEmpty(channels))
        return {};
    Energies energies(channels.size());
    inParallel(channels.size(), processorCount(),
               [&](std::size_t channel) { energies.weighChannel(channels, channel, sampleRate); });
    return readingOf(energies, peaks);
}

} // namespace orvane::Master
