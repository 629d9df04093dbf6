#include "laboratory/Arguments.h"
#include "laboratory/Verb.h"
#include "prompt/Crate.h"

#include <QJsonArray>
#include <QJsonObject>

namespace orvane::lab {

using namespace Qt::Literals::StringLiterals;

namespace {

QJsonObject describe(const Prompt::Scene& scene)
{
    return {{u"id"_s, scene.id},
            {u"family"_s, scene.family},
            {u"place"_s, scene.place},
            {u"year"_s, scene.year},
            {u"genres"_s, QJsonArray::fromStringList(scene.genres)},
            {u"bpm"_s, QJsonArray{scene.bpm.first, scene.bpm.last}},
            {u"keys"_s, QJsonArray::fromStringList(scene.keys)},
            {u"moods"_s, QJsonArray::fromStringList(scene.moods)},
            {u"voices"_s, QJsonArray::fromStringList(scene.voices)},
            {u"details"_s, QJsonArray::fromStringList(scene.details)},
            {u"motions"_s, QJsonArray::fromStringList(scene.motions)},
            {u"subjects"_s, QJsonArray::fromStringList(scene.subjects)}};
}

} // namespace

QJsonValue crate(const QStringList& arguments)
{
    Arguments(arguments, {}).alone(0, 0);
    QJsonArray rows;
    for (const Prompt::Scene& scene : Prompt::crate().scenes())
        rows.append(describe(scene));
    return rows;
}

} // namespace orvane::lab
