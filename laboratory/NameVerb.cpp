#include "laboratory/Arguments.h"
#include "laboratory/Verb.h"
#include "trackfiles/namer/NameRules.h"
#include "trackfiles/namer/RenamePlan.h"

#include <QJsonArray>
#include <QJsonObject>

namespace orvane::lab {

using namespace Qt::Literals::StringLiterals;

namespace {

QJsonArray toJson(const QList<TrackNamer::Rename>& plan)
{
    QJsonArray rows;
    for (const TrackNamer::Rename& row : plan)
        rows.append(QJsonObject{{u"from"_s, row.from},
                                {u"to"_s, row.to},
                                {u"changes"_s, row.changes()},
                                {u"files"_s, QJsonArray::fromStringList(row.files)}});
    return rows;
}

} // namespace

QJsonValue name(const QStringList& arguments)
{
    const Arguments given(arguments, {u"pattern"_s}, {u"perform"_s});
    const QString folder = absolute(given.alone(1, 1).first());
    const QString pattern = given.text(u"pattern"_s).value_or(TrackNamer::patterns().front().id);
    const QList<TrackNamer::Rename> plan = TrackNamer::plan(folder, pattern);
    if (!given.has(u"perform"_s))
        return toJson(plan);
    const TrackNamer::Performed performed = TrackNamer::perform(plan);
    return QJsonObject{{u"plan"_s, toJson(plan)},
                       {u"renamed"_s, performed.renamed},
                       {u"problems"_s, QJsonArray::fromStringList(performed.problems)}};
}

} // namespace orvane::lab
