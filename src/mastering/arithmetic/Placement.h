#pragma once

#include <cstdint>
#include <vector>

namespace orvane::Master {

/// Where a watermark lands in a track.
struct Placement
{
    enum class Kind
    {
        /// Regular hits; `count` is the seconds between them.
        EverySeconds,
        /// Hits about `count` seconds apart, jittered.
        Scattered,
        /// `count` hits, evenly spaced.
        TimesAcross,
        /// One near the start, one near the end; `count` is 0.
        StartAndEnd,
    };

    Kind kind = Kind::EverySeconds;
    std::int64_t count = 60;

    static constexpr Placement everySeconds(std::int64_t seconds) { return {Kind::EverySeconds, seconds}; }

    static constexpr Placement scattered(std::int64_t seconds) { return {Kind::Scattered, seconds}; }

    static constexpr Placement timesAcross(std::int64_t count) { return {Kind::TimesAcross, count}; }

    static constexpr Placement startAndEnd() { return {Kind::StartAndEnd, 0}; }

    bool operator==(const Placement&) const = default;
};

/// The number that a placement is stored as: 0 for start and end, the seconds for regular hits, their negative for
/// scattered ones, 1000 and the count for hits across the track. What lies outside its case's numbers is held at the
/// nearest one.
std::int64_t placementTag(const Placement& placement);

/// The placement of any stored number.
Placement placementForTag(std::int64_t tag);

/// The frames at which a tag of `tagFrames` starts in a track of `trackFrames`, ascending; none where the track is not
/// longer than the tag. `sampleRate` in Hz; the same `seed` gives the same scattered positions.
std::vector<std::int64_t> tagHits(const Placement& placement, std::int64_t trackFrames, std::int64_t tagFrames,
                                  double sampleRate, std::int64_t seed);

} // namespace orvane::Master
