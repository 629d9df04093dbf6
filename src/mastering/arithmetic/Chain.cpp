#include "mastering/arithmetic/Chain.h"

#include "mastering/arithmetic/Decibels.h"
#include "mastering/arithmetic/Limiter.h"
#include "mastering/arithmetic/Loudness.h"
#include "mastering/arithmetic/TruePeak.h"

#include <algorithm>
#include <cmath>

namespace orvane::Master {

namespace {

constexpr int lastTry = 3;
constexpr double tolerance = 0.01;
constexpr double smallestStep = 0.02;

/// The clamp holds the samples, but what lies between them can exceed the ceiling: the limiter is set lower by the
/// overshoot and starts again from the unlimited signal. Returns what it comes to.
Peaks limitTruePeak(Channels& channels, double ceiling, double sampleRate)
{
    const Channels gained = channels;
    double workingCeiling = ceiling;
    for (int attempt = 0;; ++attempt) {
        limit(channels, workingCeiling, sampleRate);
        const Peaks peaks = peaksOf(channels);
        if (peaks.truePeak <= ceiling + tolerance || attempt == lastTry)
            return peaks;
        workingCeiling -= std::max(peaks.truePeak - ceiling, smallestStep);
        std::copy(gained.begin(), gained.end(), channels.begin());
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
    const double gain = linearGain(target - before.integrated);
    amplify(channels, gain);
    const bool exceeds = peakDB(channels, sampleRate) > ceiling;
    if (exceeds)
        limitTruePeak(channels, ceiling, sampleRate);
    return {
        .before = before, .after = measure(channels, sampleRate), .gainApplied = decibels(gain), .limited = exceeds};
}

} // namespace orvane::Master
