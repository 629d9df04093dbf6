#include "fuzz/Law.h"
#include "suno/FeedPage.h"

#include <QJsonDocument>

#include <cmath>

using orvane::Clip;
using orvane::fuzz::mustHold;

namespace {

void checkClip(const Clip& clip)
{
    mustHold(!clip.id.isEmpty());
    mustHold(!clip.title.isEmpty());
    mustHold(std::isfinite(clip.durationSeconds));
}

} // namespace

/// A record of the feed is dropped for its identifier and for nothing else; a page never gives more than it holds.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray input = orvane::fuzz::bytes(data, size);
    const QJsonObject record = QJsonDocument::fromJson(input).object();
    const auto clip = Clip::fromJson(record);
    mustHold(clip.has_value() == !record.value(u"id").toString().isEmpty());
    if (clip)
        checkClip(*clip);

    const orvane::FeedPage page = orvane::readFeedPage(input);
    mustHold(page.clips.size() <= page.records);
    mustHold(page.error.isEmpty() || page.records == 0);
    for (const Clip& read : page.clips)
        checkClip(read);
    mustHold(orvane::readFeedPage(input) == page);
    return 0;
}
