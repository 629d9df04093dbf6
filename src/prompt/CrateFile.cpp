#include "prompt/CrateFile.h"

#include <QFile>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

/// A resource in a static library is known only once this has been called, outside of any namespace.
static void initCrate()
{
    Q_INIT_RESOURCE(orvane_prompt_crate);
}

namespace orvane::Prompt {
namespace {

constexpr const char* families[] = {"house", "techno",  "hiphop", "rock",  "experimental", "global",  "metal",
                                    "soul",  "country", "folk",   "latin", "pop",          "ambient", "jazz"};

QByteArray compiled(const QString& name)
{
    QFile file(u":/prompt/crate/"_s + name + u".json"_s);
    const bool opened = file.open(QIODevice::ReadOnly);
    Q_ASSERT(opened);
    return opened ? file.readAll() : QByteArray();
}

QStringList texts(const QJsonValue& value)
{
    QStringList list;
    const QJsonArray array = value.toArray();
    list.reserve(array.size());
    for (const QJsonValue& entry : array)
        list.append(entry.toString());
    return list;
}

Scene sceneOf(const QString& family, const QJsonObject& row)
{
    const QJsonArray bpm = row[u"bpm"].toArray();
    return {.id = row[u"id"].toString(),
            .family = family,
            .place = row[u"place"].toString(),
            .year = row[u"year"].toString(),
            .genres = texts(row[u"genres"]),
            .bpm = {.first = bpm.at(0).toInt(), .last = bpm.at(1).toInt()},
            .keys = texts(row[u"keys"]),
            .moods = texts(row[u"moods"]),
            .voices = texts(row[u"voices"]),
            .details = texts(row[u"details"]),
            .motions = texts(row[u"motions"]),
            .subjects = texts(row[u"subjects"])};
}

} // namespace

QList<Scene> scenesOf(const QString& family, const QByteArray& json)
{
    QList<Scene> scenes;
    const QJsonArray rows = QJsonDocument::fromJson(json).array();
    for (const QJsonValue& row : rows)
        scenes.append(sceneOf(family, row.toObject()));
    return scenes;
}

QList<Scene> compiledScenes()
{
    initCrate();
    QHash<QString, Scene> byId;
    for (const char* family : families) {
        const QString name = QString::fromLatin1(family);
        for (const Scene& scene : scenesOf(name, compiled(name)))
            byId.insert(scene.id, scene);
    }
    QList<Scene> ordered;
    for (const QJsonValue& id : QJsonDocument::fromJson(compiled(u"order"_s)).array())
        ordered.append(byId.value(id.toString()));
    return ordered;
}

} // namespace orvane::Prompt
