#include "mastering/arithmetic/Tag.h"

#include "mastering/arithmetic/Chain.h"
#include "mastering/arithmetic/Decibels.h"
#include "mastering/arithmetic/Loudness.h"

#include <algorithm>
#include <cmath>

namespace orvane::Master {

namespace {

constexpr double fadeLength = 220.0;

double fadeAt(std::int64_t position, std::int64_t length)
{
    return std::min(double(std::min(position, length - 1 - position)) / fadeLength, 1.0);
}

/// Adds what of the tag's channel, laid at frame `hit`, falls between the frames `start` and `end`.
void addTag(std::span<double> target, const std::vector<double>& tag, std::int64_t hit, std::int64_t start,
            std::int64_t end)
{
    const auto length = std::int64_t(tag.size());
    const std::int64_t first = std::max(hit, start);
    const std::int64_t last = std::min({end, hit + length, start + std::int64_t(target.size())});
    for (std::int64_t frame = first; frame < last; ++frame) {
        const std::int64_t position = frame - hit;
        target[std::size_t(frame - start)] += tag[std::size_t(position)] * fadeAt(position, length);
    }
}

} // namespace

Channels withChannelCount(Channels tag, std::size_t count)
{
    const std::size_t own = tag.size();
    const std::size_t wanted = std::max<std::size_t>(count, 1);
    tag.resize(wanted);
    for (std::size_t channel = own; own > 0 && channel < wanted; ++channel)
        tag[channel] = tag[channel % own];
    return tag;
}

Channels atLevel(Channels tag, double level, double reference, double sampleRate)
{
    const double own = measure(tag, sampleRate).integrated;
    if (std::isfinite(reference) && std::isfinite(own))
        amplify(tag, linearGain(reference + level - own));
    return tag;
}

void stamp(Channels& channels, const Channels& tag, std::span<const std::int64_t> hits, std::int64_t bufferStart)
{
    if (!isEmpty(channels))
        stamp(channels, 0, channels.front().size(), tag, hits, bufferStart);
}

void stamp(Channels& channels, std::size_t first, std::size_t end, const Channels& tag,
           std::span<const std::int64_t> hits, std::int64_t bufferStart)
{
    if (isEmpty(tag) || first >= end)
        return;
    const std::int64_t bufferEnd = bufferStart + std::int64_t(end - first);
    const auto tagEnd = std::int64_t(tag.front().size());
    for (const std::int64_t hit : hits) {
        for (std::size_t channel = 0; channel < channels.size(); ++channel) {
            const std::size_t length = channels[channel].size();
            const auto target = std::span(channels[channel]).subspan(std::min(first, length));
            addTag(target, tag[channel % tag.size()], hit, bufferStart, std::min(bufferEnd, hit + tagEnd));
        }
    }
}

} // namespace orvane::Master
