#include "laboratory/VideoArguments.h"

#include "laboratory/Verb.h"

#include <algorithm>

namespace orvane::lab {

using namespace Qt::Literals::StringLiterals;

namespace {

int integerFrom(const Arguments& arguments, const QString& option, int least, int most, int otherwise)
{
    const int value = arguments.integer(option).value_or(otherwise);
    if (value < least || value > most)
        throw UsageError(u"--%1 takes %2 to %3."_s.arg(option).arg(least).arg(most));
    return value;
}

Video::Look::Aspect aspectOf(const Arguments& arguments)
{
    const QString text = arguments.text(u"aspect"_s).value_or(Video::rawValue({}));
    const auto& all = Video::Look::allAspects;
    if (std::none_of(all.begin(), all.end(), [&](auto aspect) { return Video::rawValue(aspect) == text; }))
        throw UsageError(u"--aspect takes 9:16, 1:1 or 16:9, not %1."_s.arg(text));
    return Video::aspectNamed(text);
}

} // namespace

QStringList lookOptions()
{
    return {u"artwork"_s, u"title"_s, u"artist"_s, u"aspect"_s, u"fps"_s, u"bars"_s};
}

QStringList lookFlags()
{
    return {u"no-artwork"_s, u"no-watermark"_s};
}

Video::Look lookOf(const Arguments& arguments)
{
    return {.aspect = aspectOf(arguments),
            .fps = integerFrom(arguments, u"fps"_s, 1, 120, 30),
            .bars = integerFrom(arguments, u"bars"_s, 1, 512, 48),
            .showArtwork = !arguments.has(u"no-artwork"_s),
            .showWatermark = !arguments.has(u"no-watermark"_s)};
}

QString artworkOf(const Arguments& arguments)
{
    const std::optional<QString> path = arguments.text(u"artwork"_s);
    return path ? absolute(*path) : QString();
}

} // namespace orvane::lab
