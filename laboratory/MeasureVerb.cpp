#include "laboratory/Arguments.h"
#include "laboratory/Json.h"
#include "laboratory/Verb.h"
#include "mastering/Master.h"

namespace orvane::lab {

QJsonValue measure(const QStringList& arguments)
{
    const QStringList paths = Arguments(arguments, {}).alone(1, 1);
    const Master::Sound sound = Master::read(absolute(paths[0]));
    return toJson(Master::measure(sound.channels, sound.sampleRate));
}

} // namespace orvane::lab
