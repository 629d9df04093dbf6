#include "dj/arithmetic/Cuts.h"

#include "dj/arithmetic/Grid.h"
#include "dj/arithmetic/MixRate.h"

#include <algorithm>
#include <cmath>

namespace orvane::DJ {

namespace {

/// More than any sound has, and little enough to be added to itself.
constexpr double mostFrames = 1e15;

} // namespace

std::int64_t wholeFrames(double frames)
{
    return std::isnan(frames) ? 0 : std::int64_t(std::clamp(frames, -mostFrames, mostFrames));
}

std::int64_t Cuts::rounded(std::int64_t frames) const
{
    return onBars && barFrames > 1 ? frames / barFrames * barFrames : frames;
}

Cuts cutsFor(double crossfade, double bpm, bool onBars)
{
    Cuts cuts{.fadeFrames = wholeFrames(crossfade * mixRate),
              .barFrames = wholeFrames(60.0 / bpm * beatsInBar * mixRate),
              .onBars = onBars};
    if (onBars) {
        const std::int64_t bar = std::max<std::int64_t>(cuts.barFrames, 1);
        cuts.fadeFrames = std::max(bar, (cuts.fadeFrames + bar / 2) / bar * bar);
    }
    return cuts;
}

} // namespace orvane::DJ
