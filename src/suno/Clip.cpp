#include "suno/Clip.h"

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

std::optional<QString> text(const QJsonObject& json, QStringView key)
{
    const QJsonValue value = json.value(key);
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

QString titleOf(const QJsonObject& json)
{
    const QString title = text(json, u"title").value_or(QString());
    return title.isEmpty() ? u"Untitled"_s : title;
}

std::optional<QString> imageOf(const QJsonObject& json)
{
    const auto large = text(json, u"image_large_url");
    return large ? large : text(json, u"image_url");
}

/// Suno keeps the lyrics under the key named prompt.
QString lyricsOf(const QJsonObject& json, const QJsonObject& metadata)
{
    const auto own = text(metadata, u"prompt");
    return own ? *own : text(json, u"prompt").value_or(QString());
}

} // namespace

std::optional<Clip> Clip::fromJson(const QJsonObject& json)
{
    const auto id = text(json, u"id");
    if (!id || id->isEmpty())
        return std::nullopt;
    const QJsonObject metadata = json.value(u"metadata").toObject();
    return Clip{
        .id = *id,
        .title = titleOf(json),
        .audioURL = text(json, u"audio_url"),
        .imageURL = imageOf(json),
        .lyrics = lyricsOf(json, metadata),
        .tags = text(metadata, u"tags").value_or(QString()),
        .durationSeconds = metadata.value(u"duration").toDouble(180.0),
    };
}

} // namespace orvane
