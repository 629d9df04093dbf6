#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QList>
#include <QString>
#include <QUrl>

#include <optional>

namespace orvane {

/// A project of the user.
struct Workspace
{
    QString id = {};
    QString name = {};

    bool operator==(const Workspace&) const = default;

    /// Absent where the object is no project: an `id` under 32 characters, no name, or the marks of a clip.
    static std::optional<Workspace> fromJson(const QJsonObject& json);
};

/// The projects in an answer that may be a list, a wrapped list or one project; enters at most four levels.
/// The caller gives depth 0.
QList<Workspace> workspaces(const QJsonValue& json, int depth);

/// The project identifier in an address of the Suno site, from its path or else its query; absent on another host.
/// `siteDomain` is the site's domain, which the host must contain.
std::optional<QString> workspaceID(const std::optional<QUrl>& sunoURL, const QString& siteDomain);

} // namespace orvane
