#include "mastering/arithmetic/Chain.h"

#include "mastering/arithmetic/Decibels.h"
#include "mastering/arithmetic/InParallel.h"
#include "mastering/arithmetic/Limiter.h"
#include "mastering/arithmetic/Loudness.h"

#include <algorithm>
#include <cmath>

namespace orvane::Master {

namespace {

constexpr int lastTry = 3;
constexpr double tolerance = 0.01;
constexpr double smallestStep = 0.02;
/// So many samples stay near the processor between two things that are done to them.
constexpr std::size_t pieceLength = 32768;

ChannelPeaks amplifyAndScan(std::vector<double>& channel, double factor)
{
    PeakScan scan;
    for (std::size_t start = 0; start < channel.size(); start += pieceLength) {
        const std::size_t end = std::min(start + pieceLength, channel.size());
        for (std::size_t frame = start; frame < end; ++frame)
            channel[frame] *= factor;
        scan.advance(std::span(channel).first(end));
    }
    return scan.finish(channel);
}

/// Multiplies every sample and gives the peaks of what it comes to.
Peaks amplifyAndScan(Channels& channels, double factor)
{
    std::vector<ChannelPeaks> peaks(channels.size());
    inParallel(channels.size(), processorCount(),
               [&](std::size_t channel) { peaks[channel] = amplifyAndScan(channels[channel], factor); });
    return highestOf(peaks);
}

/// The clamp holds the samples, but what lies between them can exceed the ceiling: the limiter is set lower by the
/// overshoot and starts again from the unlimited signal. Returns what it comes to.
Peaks limitTruePeak(Channels& channels, double ceiling, double sampleRate)
{
    double workingCeiling = ceiling;
    for (int attempt = 0;; ++attempt) {
        const Peaks peaks = peaksLimited(channels, workingCeiling, sampleRate);
        if (peaks.truePeak <= ceiling + tolerance || attempt == lastTry) {
            limit(channels, workingCeiling, sampleRate);
            return peaks;
        }
        workingCeiling -= std::max(peaks.truePeak - ceiling, smallestStep);
    }
}

} // namespace

void amplify(Channels& channels, double factor)
{
    for (auto& channel : channels) {
        for (double& sample : channel)
            sample *= factor;
    }
}

Result apply(double target, double ceiling, Channels& channels, double sampleRate)
{
    const Reading before = measure(channels, sampleRate);
    if (!std::isfinite(before.integrated))
        return {.before = before, .after = before};
    const Shaped shaped = shape(before.integrated, target, ceiling, channels, sampleRate);
    return {.before = before,
            .after = measureBeside(shaped.peaks, channels, sampleRate),
            .gainApplied = shaped.gainApplied,
            .limited = shaped.limited};
}

Shaped shape(double integrated, double target, double ceiling, Channels& channels, double sampleRate)
{
    const double gain = linearGain(target - integrated);
    Peaks peaks = amplifyAndScan(channels, gain);
    const bool exceeds = peaks.truePeak > ceiling;
    if (exceeds)
        peaks = limitTruePeak(channels, ceiling, sampleRate);
    return {.gainApplied = decibels(gain), .limited = exceeds, .peaks = peaks};
}

} // namespace orvane::Master
