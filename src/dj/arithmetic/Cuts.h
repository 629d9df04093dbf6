#pragma once

#include <cstddef>
#include <cstdint>

namespace orvane::DJ {

/// `frames` without its fraction; 0 for what is no number, and what is beyond all sound at its limit.
std::int64_t wholeFrames(double frames);

/// Where the tracks of a mix are cut.
struct Cuts
{
    /// Length of a blend, where both tracks are long enough.
    std::int64_t fadeFrames = 0;
    /// Length of a bar at the mix's tempo; 0 and 1 are none to cut by.
    std::int64_t barFrames = 0;
    /// Whether tracks are cut on bar lines only.
    bool onBars = true;

    /// `frames`, or as many of them as make whole bars where cuts are on bar lines.
    std::int64_t rounded(std::int64_t frames) const;

    bool operator==(const Cuts&) const = default;
};

/// The cuts of a mix at `bpm` beats a minute with blends of `crossfade` seconds, which are brought to the nearest whole
/// number of bars, at least one, where cuts are on bar lines.
Cuts cutsFor(double crossfade, double bpm, bool onBars);

} // namespace orvane::DJ
