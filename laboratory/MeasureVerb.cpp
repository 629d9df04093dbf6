#include "laboratory/Arguments.h"
#include "laboratory/Json.h"
#include "laboratory/Verb.h"
#include "mastering/Master.h"

namespace orvane::lab {

QJsonValue measure(const QStringList& arguments)
{
    const QStringList paths = Arguments(arguments, {}).alone(1, 1);
    return toJson(Master::readAndMeasure(absolute(paths[0])).reading);
}

} // namespace orvane::lab
