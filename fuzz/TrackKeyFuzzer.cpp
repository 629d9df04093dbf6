#include "fuzz/Law.h"
#include "trackfiles/keys/TrackKeys.h"

using orvane::fuzz::mustHold;
using orvane::Library::trackKey;
using orvane::TrackNamer::stripIndexPrefix;

/// A key is a part of the name, what only marks a file as one of a track's does not change it, and stripping a number
/// takes nothing but a beginning, each time, until none is left.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString name = QString::fromUtf8(orvane::fuzz::bytes(data, size));
    const QString key = trackKey(name);
    mustHold(name.contains(key));
    mustHold(trackKey(key + QStringLiteral(" lyrics.txt")) == trackKey(key + QStringLiteral(".mp3")) || key.isEmpty() ||
             key.endsWith(u" lyrics"));

    QString title = name;
    for (QString shorter = stripIndexPrefix(title); shorter != title; shorter = stripIndexPrefix(title)) {
        mustHold(title.endsWith(shorter) && shorter.size() < title.size());
        title = shorter;
    }
    mustHold(stripIndexPrefix(QStringLiteral("012 - ") + title) == title || title.isEmpty() || title.front().isSpace());

    const auto asset = orvane::Library::classify(name, {});
    mustHold(asset == orvane::Library::classify(name.toUpper(), {}) || name.toUpper().toLower() != name.toLower());
    mustHold(asset != orvane::Library::Asset::mastered);
    return 0;
}
