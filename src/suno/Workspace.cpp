#include "suno/Workspace.h"

#include <QJsonArray>
#include <QUrlQuery>

#include <algorithm>
#include <array>

namespace orvane {

namespace {

/// Tells a project's identifier from other things that answers and addresses carry in its place.
constexpr qsizetype shortestIdentifier = 32;
constexpr int deepestLevel = 3;

QString nameOf(const QJsonObject& json)
{
    for (const QStringView key : {u"name", u"display_name", u"title", u"project_name"})
        if (const QString name = json.value(key).toString(); !name.isEmpty())
            return name;
    return {};
}

QList<Workspace> inList(const QJsonArray& list)
{
    const bool allObjects =
        std::all_of(list.begin(), list.end(), [](const QJsonValue& item) { return item.isObject(); });
    QList<Workspace> found;
    if (!allObjects)
        return found;
    for (const QJsonValue& item : list)
        if (const auto workspace = Workspace::fromJson(item.toObject()))
            found.append(*workspace);
    return found;
}

QList<Workspace> inObject(const QJsonObject& object, int depth)
{
    for (const QStringView key : {u"projects", u"project", u"data", u"results", u"items"}) {
        const auto member = object.constFind(key);
        if (member == object.constEnd())
            continue;
        if (const QList<Workspace> found = workspaces(*member, depth + 1); !found.isEmpty())
            return found;
    }
    const auto single = Workspace::fromJson(object);
    return single ? QList{*single} : QList<Workspace>();
}

std::optional<QString> identifierInPath(const QUrl& url)
{
    static constexpr std::array<QStringView, 4> markers{u"project", u"projects", u"workspace", u"workspaces"};
    const QString path = url.path(QUrl::FullyEncoded);
    const QList<QStringView> components = QStringView(path).split(u'/', Qt::SkipEmptyParts);
    for (qsizetype index = 0; index + 1 < components.size(); ++index) {
        if (std::find(markers.begin(), markers.end(), components[index]) == markers.end())
            continue;
        const QString next = QUrl::fromPercentEncoding(components[index + 1].toUtf8());
        if (next.size() >= shortestIdentifier)
            return next;
    }
    return std::nullopt;
}

std::optional<QString> identifierInQuery(const QUrl& url)
{
    const QUrlQuery query(url);
    for (const QStringView name : {u"project_id", u"workspace_id", u"projectId"}) {
        const QString value = query.queryItemValue(name.toString(), QUrl::FullyDecoded);
        if (value.size() >= shortestIdentifier)
            return value;
    }
    return std::nullopt;
}

} // namespace

std::optional<Workspace> Workspace::fromJson(const QJsonObject& json)
{
    const QString id = json.value(u"id").toString();
    const QString name = nameOf(json);
    const bool isClip = json.contains(u"audio_url") || json.contains(u"clip");
    if (id.size() < shortestIdentifier || name.isEmpty() || isClip)
        return std::nullopt;
    return Workspace{.id = id, .name = name};
}

QList<Workspace> workspaces(const QJsonValue& json, int depth)
{
    if (depth > deepestLevel)
        return {};
    if (json.isArray())
        return inList(json.toArray());
    if (json.isObject())
        return inObject(json.toObject(), depth);
    return {};
}

std::optional<QString> workspaceID(const std::optional<QUrl>& sunoURL, const QString& siteDomain)
{
    if (!sunoURL || siteDomain.isEmpty() || !sunoURL->host().contains(siteDomain, Qt::CaseInsensitive))
        return std::nullopt;
    const auto inPath = identifierInPath(*sunoURL);
    return inPath ? inPath : identifierInQuery(*sunoURL);
}

} // namespace orvane
