#include "dj/arithmetic/Conform.h"

#include "dj/arithmetic/MixRate.h"
#include "mastering/arithmetic/Chain.h"
#include "mastering/arithmetic/InParallel.h"
#include "mastering/arithmetic/Loudness.h"
#include "mastering/arithmetic/Stretch.h"

#include <cmath>
#include <utility>
#include <vector>

namespace orvane::DJ {

namespace {

constexpr double ceiling = -1.0;
constexpr double sameRate = 0.5;

/// Replaces each channel by what `change` makes of it, all at once.
template <typename Change>
void inEachChannel(Channels& channels, Change change)
{
    inParallel(channels.size(), processorCount(),
               [&](std::size_t channel) { channels[channel] = change(std::move(channels[channel])); });
}

Channels inStereo(Channels channels)
{
    if (!channels.empty())
        channels.resize(2, channels.front());
    return channels;
}

std::vector<double> atMixRate(std::vector<double> samples, double rate)
{
    if (std::abs(rate - mixRate) > sameRate)
        return resample(std::move(samples), rate / mixRate);
    return samples;
}

std::vector<double> atSpeed(std::vector<double> samples, const Conforming& how)
{
    if (how.ratio == 1.0)
        return samples;
    return how.keepsPitch ? Master::stretch(std::move(samples), how.ratio) : resample(std::move(samples), how.ratio);
}

void level(Channels& track, double target)
{
    const double integrated = Master::integratedLoudness(track, mixRate);
    if (std::isfinite(integrated))
        Master::shape(integrated, target, ceiling, track, mixRate);
}

bool losesIntro(const Channels& track, const Conforming& how)
{
    return how.intro >= 1 && std::int64_t(track.front().size()) > how.intro + how.leastRest;
}

} // namespace

Channels conform(Channels track, double rate, const Conforming& how)
{
    track = inStereo(std::move(track));
    if (track.empty())
        return track;
    inEachChannel(track,
                  [&](std::vector<double> samples) { return atSpeed(atMixRate(std::move(samples), rate), how); });
    if (how.level)
        level(track, *how.level);
    if (how.semitones != 0)
        inEachChannel(
            track, [&](std::vector<double> samples) { return Master::pitchShift(std::move(samples), how.semitones); });
    if (losesIntro(track, how)) {
        for (auto& channel : track)
            channel.erase(channel.begin(), channel.begin() + how.intro);
    }
    return track;
}

} // namespace orvane::DJ
