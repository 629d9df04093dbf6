#include "mastering/Watermark.h"

#include "main/App/L10n.h"
#include "mastering/Failure.h"
#include "mastering/Read.h"
#include "mastering/arithmetic/Loudness.h"
#include "mastering/arithmetic/Resample.h"
#include "mastering/arithmetic/Tag.h"

#include <QFileInfo>

#include <cmath>

namespace orvane::Master {

namespace {

void bringToRate(Sound& tag, double sampleRate)
{
    if (!(std::abs(tag.sampleRate - sampleRate) > 0.5))
        return;
    for (auto& channel : tag.channels)
        channel = resample(std::move(channel), tag.sampleRate / sampleRate);
}

} // namespace

Channels prepareTag(const QString& path, double sampleRate, std::size_t channelCount, double level, double reference)
{
    Sound tag = read(path);
    if (isEmpty(tag.channels))
        throw Failure(Failure::CouldNotPrepare, L10n::t(L10n::Key::wmEmptyTag, {QFileInfo(path).fileName()}));
    bringToRate(tag, sampleRate);
    return atLevel(withChannelCount(std::move(tag.channels), channelCount), level, reference, sampleRate);
}

Channels prepareTag(const QString& path, const Channels& track, double sampleRate, double level)
{
    return prepareTag(path, sampleRate, track.size(), level, measure(track, sampleRate).integrated);
}

int applyWatermark(const Watermark& watermark, Channels& channels, double sampleRate, std::int64_t seed)
{
    if (!watermark.isUsable())
        return 0;
    return applyWatermark(watermark, channels, sampleRate, seed, measure(channels, sampleRate).integrated);
}

int applyWatermark(const Watermark& watermark, Channels& channels, double sampleRate, std::int64_t seed,
                   double reference)
{
    if (!watermark.isUsable() || isEmpty(channels))
        return 0;
    try {
        const Channels tag = prepareTag(*watermark.file, sampleRate, channels.size(), watermark.level, reference);
        if (isEmpty(tag))
            return 0;
        const auto hits = tagHits(watermark.placement, std::int64_t(channels.front().size()),
                                  std::int64_t(tag.front().size()), sampleRate, seed);
        stamp(channels, tag, hits, 0);
        return int(hits.size());
    } catch (const std::exception&) {
        return 0;
    }
}

} // namespace orvane::Master
