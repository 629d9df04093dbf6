#pragma once

#include <QString>
#include <QUrl>

#include <optional>

namespace orvane {

/// The track at hand: its name and the files it has.
struct TrackRef
{
    QString name;
    std::optional<QUrl> audio;
    std::optional<QUrl> artwork;
    std::optional<QUrl> lyrics;

    bool operator==(const TrackRef&) const = default;

    bool isUsable() const { return audio.has_value(); }
};

} // namespace orvane
