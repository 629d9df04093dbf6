#include "laboratory/Arguments.h"
#include "laboratory/Json.h"
#include "laboratory/Verb.h"
#include "mastering/Master.h"
#include "mastering/PlatformTexts.h"

#include <QJsonArray>

namespace orvane::lab {

using namespace Qt::Literals::StringLiterals;

namespace {

QJsonObject describe(const Master::Platform& platform)
{
    return {{u"name"_s, platform.name},
            {u"target"_s, platform.target},
            {u"ceiling"_s, platform.ceiling},
            {u"normalisation"_s, rawValue(platform.normalisation)},
            {u"confidence"_s, rawValue(platform.confidence)},
            {u"note"_s, platform.note}};
}

QJsonArray tableFor(const QString& path)
{
    QJsonArray table;
    for (const Master::PlatformRow& row : platformRows(Master::readAndMeasure(path).reading)) {
        QJsonObject object = describe(row.platform);
        object.insert(u"change"_s, row.change);
        table.append(object);
    }
    return table;
}

} // namespace

QJsonValue platforms(const QStringList& arguments)
{
    const QStringList paths = Arguments(arguments, {}).alone(0, 1);
    if (!paths.isEmpty())
        return tableFor(absolute(paths[0]));
    QJsonArray table;
    for (const Master::Platform& platform : Master::platforms())
        table.append(describe(platform));
    return table;
}

} // namespace orvane::lab
