#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

namespace orvane {

/// One track of the library, as the feed tells of it.
struct Clip
{
    /// Never empty.
    QString id = {};
    /// Never empty; "Untitled" where the feed gives none.
    QString title = {};
    std::optional<QString> audioURL = {};
    std::optional<QString> imageURL = {};
    QString lyrics = {};
    QString tags = {};
    double durationSeconds = 180.0;

    bool operator==(const Clip&) const = default;

    /// Reads a record of the feed; absent without a usable `id`, and for no other reason.
    static std::optional<Clip> fromJson(const QJsonObject& json);
};

} // namespace orvane
