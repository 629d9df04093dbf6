#include "fuzz/Law.h"
#include "platform/text/Characters.h"
#include "trackfiles/namer/NameRules.h"

using orvane::fuzz::mustHold;
using orvane::TrackNamer::hook;

/// A hook is one line that the lyrics hold in some case, short enough for a title; one that lies between section marks
/// is the same, and a song has one where it has a line of six characters.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString lyrics = QString::fromUtf8(orvane::fuzz::bytes(data, size));
    const auto line = hook(lyrics);
    mustHold(hook(QStringLiteral("[Verse]\n\n") + lyrics + QStringLiteral("\n(end)")) == line);
    if (!line)
        return 0;
    // Upper case may be longer, as of one letter three may come.
    mustHold(orvane::characterCount(*line) <= 3 * 48);
    mustHold(orvane::lines(*line).size() == 1);
    // A start of 48 characters without a blank stays as it is, also where tabs end it.
    mustHold(orvane::trimmedBlanks(*line) == *line || orvane::characterCount(*line) >= 48);
    mustHold(!line->startsWith(u'[') && !line->startsWith(u'*'));
    mustHold(lyrics.toLower().contains(line->toLower()) || lyrics.toUpper().contains(line->toUpper()));
    return 0;
}
