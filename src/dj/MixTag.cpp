#include "dj/MixTag.h"

#include "dj/SetTempo.h"
#include "dj/arithmetic/MixRate.h"
#include "mastering/arithmetic/Tag.h"

#include <QHash>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <limits>

namespace orvane::DJ {

namespace {

constexpr std::size_t channelCount = 2;
constexpr double usualLevel = -14.0;

/// The same for the same name at every start of the program, and not negative.
std::int64_t seedOf(const QString& name)
{
    constexpr std::size_t stable = 0;
    const auto hash = std::int64_t(qHash(name, stable));
    return hash == std::numeric_limits<std::int64_t>::min() ? 0 : std::abs(hash);
}

double playedRatio(const Analysis& track, double median, const MixSettings& settings)
{
    const double aligned = alignOctave(track.bpm, median);
    return settings.matchTempo && aligned > 0.0 ? speedRatio(median, aligned, settings.maxStretch) : 1.0;
}

} // namespace

std::int64_t expectedFrames(const Set& set, const MixSettings& settings)
{
    const double median = medianBPM(set);
    double seconds = 0.0;
    for (const Analysis& track : set)
        seconds += (track.duration - track.grid.firstBar()) / playedRatio(track, median, settings);
    seconds -= settings.crossfade * double(set.size() - 1);
    if (settings.beatMatch)
        seconds -= 2.0 * (60.0 / median * beatsInBar) * double(set.size());
    return std::max<std::int64_t>(wholeFrames(seconds * mixRate), 1);
}

MixTag MixTag::prepared(const Set& set, const MixSettings& settings, const QString& name)
{
    MixTag result;
    const Master::Watermark& watermark = settings.watermark;
    if (!watermark.isUsable())
        return result;
    try {
        const double reference = settings.levelMatch ? settings.levelTarget : usualLevel;
        result.tag_ = Master::prepareTag(*watermark.file, mixRate, channelCount, watermark.level, reference);
    } catch (const std::exception&) {
        return result;
    }
    if (!isEmpty(result.tag_))
        result.hits_ = Master::tagHits(watermark.placement, expectedFrames(set, settings),
                                       std::int64_t(result.tag_.front().size()), mixRate, seedOf(name));
    return result;
}

void MixTag::stamp(const Piece& piece) const
{
    Master::stamp(piece.channels, piece.first, piece.end, tag_, hits_, piece.position);
}

} // namespace orvane::DJ
