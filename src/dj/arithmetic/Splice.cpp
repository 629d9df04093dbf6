#include "dj/arithmetic/Splice.h"

#include "dj/arithmetic/Fades.h"
#include "dj/arithmetic/MixRate.h"
#include "mastering/arithmetic/Room.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace orvane::DJ {

namespace {

constexpr double fadeInSeconds = 2.0;
/// What is given out at once of a track: the memory of what went before goes while the next track already comes.
constexpr std::int64_t pieceLength = 1 << 18;

std::int64_t lengthOf(const Channels& channels)
{
    return std::int64_t(channels.front().size());
}

/// The frames of each channel from `first` on.
Channels from(const Channels& channels, std::int64_t first)
{
    Channels result;
    for (const auto& channel : channels)
        result.emplace_back(channel.begin() + first, channel.end());
    return result;
}

} // namespace

Splice::Splice(const Settings& settings, std::function<void(const Piece&)> take)
    : settings_(settings)
    , take_(std::move(take))
{
}

void Splice::add(Channels track)
{
    if (track.empty())
        return;
    const std::int64_t length = lengthOf(track);
    std::int64_t joint = 0;
    if (!tail_.empty()) {
        joint = blended(length);
        Channels seam = blend(tail_, track, std::size_t(joint), settings_.bass, mixRate);
        give(seam, 0, joint);
    } else if (settings_.fadesEdges) {
        fadeIn(track, fadeInSeconds, mixRate);
    }
    const Cuts& cuts = settings_.cuts;
    const std::int64_t bodyEnd = cuts.rounded(std::max<std::int64_t>(length - cuts.fadeFrames, 0));
    tail_ = from(track, std::max(bodyEnd, joint));
    giveAway(track, joint, bodyEnd);
}

void Splice::finish()
{
    if (tail_.empty())
        return;
    const std::int64_t whole = settings_.cuts.rounded(lengthOf(tail_));
    if (whole > 0) {
        for (auto& channel : tail_)
            channel.resize(std::size_t(whole));
    }
    if (settings_.fadesEdges)
        fadeOut(tail_, mixRate);
    give(tail_, 0, lengthOf(tail_));
    tail_.clear();
}

/// How many frames of the tail are blended into a track of `length` frames.
std::int64_t Splice::blended(std::int64_t length) const
{
    const std::int64_t most = std::min({length / 3, settings_.cuts.fadeFrames, lengthOf(tail_)});
    return settings_.cuts.rounded(std::max<std::int64_t>(most, 0));
}

void Splice::giveAway(Channels& track, std::int64_t first, std::int64_t end)
{
    std::vector<GivingBack> going(track.begin(), track.end());
    for (; first < end; first += pieceLength) {
        give(track, first, std::min(first + pieceLength, end));
        for (GivingBack& channel : going)
            channel.before(std::size_t(first + pieceLength));
    }
}

void Splice::give(Channels& channels, std::int64_t first, std::int64_t end)
{
    if (first >= end)
        return;
    take_({.channels = channels, .first = std::size_t(first), .end = std::size_t(end), .position = written_});
    written_ += end - first;
}

} // namespace orvane::DJ
