#include "laboratory/Outputs.h"

#include "laboratory/Verb.h"

#include <array>

namespace orvane::lab {

using namespace Qt::Literals::StringLiterals;

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

} // namespace orvane::lab
