#include "laboratory/Arguments.h"
#include "laboratory/Json.h"
#include "laboratory/Outputs.h"
#include "laboratory/Verb.h"
#include "mastering/Master.h"

namespace orvane::lab {

using namespace Qt::Literals::StringLiterals;

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
