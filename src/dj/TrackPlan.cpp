#include "dj/TrackPlan.h"

#include "dj/arithmetic/MixRate.h"
#include "dj/arithmetic/Pull.h"

#include <algorithm>
#include <cmath>

namespace orvane::DJ {

namespace {

/// A record is never played more than this much faster or slower, whatever is allowed.
constexpr double mostLikeARecord = 0.08;
constexpr double leastChange = 0.0001;
constexpr double nearEnough = 0.005;

double ratioOf(const Analysis& track, double median, const MixSettings& settings)
{
    if (!settings.matchTempo || !(track.bpm > 0.0))
        return 1.0;
    const double most = settings.preservePitch ? settings.maxStretch : std::min(settings.maxStretch, mostLikeARecord);
    const double ratio = speedRatio(median, alignOctave(track.bpm, median), most);
    return std::abs(ratio - 1.0) > leastChange ? ratio : 1.0;
}

bool reachesTempo(const Analysis& track, double ratio, double median)
{
    const double aligned = alignOctave(track.bpm, median);
    return !(aligned > 0.0) || std::abs(ratio * aligned - median) < nearEnough * median;
}

} // namespace

TrackPlan planFor(const Analysis& track, const Analysis* previous, double median, const Cuts& cuts,
                  const MixSettings& settings)
{
    const double ratio = ratioOf(track, median, settings);
    TrackPlan plan{.conforming = {.ratio = ratio, .keepsPitch = settings.preservePitch},
                   .reachesTempo = !settings.matchTempo || reachesTempo(track, ratio, median)};
    if (settings.levelMatch)
        plan.conforming.level = settings.levelTarget;
    if (previous)
        plan.conforming.semitones = nudge(track.key, previous->key, settings.keyNudge).value_or(0);
    if (settings.beatMatch && plan.reachesTempo) {
        plan.conforming.intro = wholeFrames(track.grid.firstBar() / ratio * mixRate);
        plan.conforming.leastRest = 2 * cuts.barFrames;
    }
    return plan;
}

} // namespace orvane::DJ
