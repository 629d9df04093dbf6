#pragma once

#include "dj/Analysis.h"
#include "dj/MixSettings.h"
#include "dj/arithmetic/Conform.h"
#include "dj/arithmetic/Cuts.h"

namespace orvane::DJ {

/// What becomes of a track in a mix.
struct TrackPlan
{
    Conforming conforming;
    /// Whether it comes to the mix's tempo, where it is to.
    bool reachesTempo = true;

    bool operator==(const TrackPlan&) const = default;
};

/// The plan for `track` behind `previous`, if there is one, in a mix at `median` beats a minute.
TrackPlan planFor(const Analysis& track, const Analysis* previous, double median, const Cuts& cuts,
                  const MixSettings& settings);

} // namespace orvane::DJ
