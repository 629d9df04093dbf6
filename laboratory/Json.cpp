#include "laboratory/Json.h"

#include <cmath>

namespace orvane::lab {

using namespace Qt::Literals::StringLiterals;

QJsonValue toJson(double value)
{
    return std::isfinite(value) ? QJsonValue(value) : QJsonValue(QJsonValue::Null);
}

QJsonObject toJson(const Master::Reading& reading)
{
    return {{u"integrated"_s, toJson(reading.integrated)},
            {u"truePeak"_s, toJson(reading.truePeak)},
            {u"range"_s, toJson(reading.range)},
            {u"samplePeak"_s, toJson(reading.samplePeak)}};
}

QJsonObject toJson(const Master::Result& result)
{
    return {{u"before"_s, toJson(result.before)},
            {u"after"_s, toJson(result.after)},
            {u"gainApplied"_s, toJson(result.gainApplied)},
            {u"limited"_s, result.limited}};
}

} // namespace orvane::lab
