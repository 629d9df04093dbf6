#include "laboratory/Arguments.h"
#include "laboratory/Json.h"
#include "laboratory/Verb.h"
#include "mastering/Master.h"

#include <array>

namespace orvane::lab {

using namespace Qt::Literals::StringLiterals;

namespace {

Master::Format formatNamed(const QString& name)
{
    constexpr std::array names{u"wav", u"flac", u"alac", u"aac", u"mp3"};
    for (std::size_t index = 0; index < names.size(); ++index) {
        if (name == QStringView(names[index]))
            return Master::allFormats[index];
    }
    throw UsageError(u"There is no format %1."_s.arg(name));
}

Master::MP3Rate rateOf(const Arguments& options)
{
    const int wanted = options.integer(u"rate"_s).value_or(rawValue(Master::MP3Rate::v320));
    if (const auto rate = Master::mp3RateFromRawValue(wanted))
        return *rate;
    throw UsageError(u"There is no rate %1."_s.arg(wanted));
}

Master::Watermark watermarkOf(const Arguments& options)
{
    Master::Watermark watermark;
    if (const auto file = options.text(u"tag"_s))
        watermark.file = absolute(*file);
    watermark.isOn = watermark.file.has_value();
    watermark.level = options.number(u"level"_s).value_or(watermark.level);
    if (const auto placement = options.integer(u"placement"_s))
        watermark.placement = Master::placementForTag(*placement);
    return watermark;
}

} // namespace

QJsonValue master(const QStringList& arguments)
{
    const Arguments options(arguments,
                            {u"target"_s, u"ceiling"_s, u"format"_s, u"rate"_s, u"tag"_s, u"level"_s, u"placement"_s});
    const QStringList paths = options.alone(2, 2);
    const Master::Output output{.format = formatNamed(options.requiredText(u"format"_s)), .mp3Rate = rateOf(options)};
    return toJson(Master::master(absolute(paths[0]), absolute(paths[1]), options.requiredNumber(u"target"_s),
                                 options.requiredNumber(u"ceiling"_s), output, watermarkOf(options)));
}

} // namespace orvane::lab
