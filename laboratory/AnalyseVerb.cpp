#include "laboratory/Analysed.h"
#include "laboratory/Arguments.h"
#include "laboratory/Verb.h"

namespace orvane::lab {

QJsonValue analyse(const QStringList& arguments)
{
    return toJson(analysed(Arguments(arguments, {}).alone(1, mostFiles)));
}

} // namespace orvane::lab
