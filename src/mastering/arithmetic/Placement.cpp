#include "mastering/arithmetic/Placement.h"

#include <algorithm>
#include <limits>

namespace orvane::Master {

namespace {

using Hits = std::vector<std::int64_t>;
constexpr std::int64_t largestCount = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t timesBase = 1000;

/// What a case's hits are laid out by, in frames.
struct Room
{
    /// The last frame at which the tag still fits.
    std::int64_t last;
    std::int64_t tagFrames;
    double sampleRate;
};

/// Truncated; what no integer holds becomes the nearest one that a double holds.
std::int64_t wholeFrames(double frames)
{
    constexpr double most = 9223372036854774784.0;
    return std::int64_t(std::clamp(frames, -most, most));
}

/// From one regular hit to the next: never shorter than the tag, so that hits do not overlap.
std::int64_t intervalOf(std::int64_t seconds, const Room& room)
{
    return std::max(wholeFrames(double(seconds) * room.sampleRate), room.tagFrames);
}

Hits startAndEnd(const Room& room)
{
    const std::int64_t margin = std::min(room.last / 2, wholeFrames(room.sampleRate));
    Hits hits{margin, room.last - margin};
    std::sort(hits.begin(), hits.end());
    hits.erase(std::unique(hits.begin(), hits.end()), hits.end());
    return hits;
}

Hits timesAcross(std::int64_t count, const Room& room)
{
    if (count < 1)
        return {};
    if (count >= room.last)
        return {room.last / 2};
    const std::int64_t gap = room.last / (count + 1);
    Hits hits;
    for (std::int64_t hit = 1; hit <= count; ++hit)
        hits.push_back(gap * hit);
    return hits;
}

Hits everyInterval(std::int64_t interval, const Room& room)
{
    Hits hits;
    for (std::int64_t hit = 1; hit <= room.last / interval; ++hit)
        hits.push_back(interval * hit);
    return hits;
}

/// A linear congruential generator whose upper bits are taken as a number from 0 to below 1.
class Jitter
{
public:
    explicit Jitter(std::int64_t seed)
        : state_(increment + std::uint64_t(seed) * multiplier)
    {
    }

    /// Up to 30 % of `interval` either way, in whole frames.
    std::int64_t next(std::int64_t interval)
    {
        state_ = increment + state_ * multiplier;
        const double unit = double(state_ >> 33) * 4.656612873077393e-10;
        return std::int64_t((unit - 0.5) * double(interval) * 0.6);
    }

private:
    static constexpr std::uint64_t multiplier = 6364136223846793005u;
    static constexpr std::uint64_t increment = 1442695040888963407u;
    std::uint64_t state_;
};

Hits scattered(std::int64_t interval, std::int64_t seed, const Room& room)
{
    Hits hits = everyInterval(interval, room);
    Jitter jitter(seed);
    // None is moved in front of the track: the first lies an interval behind its start.
    for (std::int64_t& hit : hits)
        hit += std::min(jitter.next(interval), room.last - hit);
    std::sort(hits.begin(), hits.end());
    return hits;
}

} // namespace

std::int64_t placementTag(const Placement& placement)
{
    switch (placement.kind) {
    case Placement::Kind::EverySeconds:
        return std::clamp<std::int64_t>(placement.count, 1, timesBase - 1);
    case Placement::Kind::Scattered:
        return -std::max<std::int64_t>(placement.count, 1);
    case Placement::Kind::TimesAcross:
        return timesBase + std::clamp<std::int64_t>(placement.count, 0, largestCount - timesBase);
    case Placement::Kind::StartAndEnd:
        break;
    }
    return 0;
}

Placement placementForTag(std::int64_t tag)
{
    if (tag == 0)
        return Placement::startAndEnd();
    if (tag < 0)
        return Placement::scattered(tag < -largestCount ? largestCount : -tag);
    return tag < timesBase ? Placement::everySeconds(tag) : Placement::timesAcross(tag - timesBase);
}

std::vector<std::int64_t> tagHits(const Placement& placement, std::int64_t trackFrames, std::int64_t tagFrames,
                                  double sampleRate, std::int64_t seed)
{
    if (trackFrames <= tagFrames || tagFrames < 1)
        return {};
    const Room room{.last = trackFrames - tagFrames, .tagFrames = tagFrames, .sampleRate = sampleRate};
    switch (placement.kind) {
    case Placement::Kind::EverySeconds:
        return everyInterval(intervalOf(placement.count, room), room);
    case Placement::Kind::Scattered:
        return scattered(intervalOf(placement.count, room), seed, room);
    case Placement::Kind::TimesAcross:
        return timesAcross(placement.count, room);
    case Placement::Kind::StartAndEnd:
        break;
    }
    return startAndEnd(room);
}

} // namespace orvane::Master
