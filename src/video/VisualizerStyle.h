#pragma once

#include <QJsonObject>
#include <QString>

namespace orvane {
class Preferences;

namespace Video {

/// How the site's visualizer is set, in the words of its page.
struct VisualizerStyle
{
    QString aspect = QStringLiteral("9:16");
    QString theme = QStringLiteral("amber");
    QString wave = QStringLiteral("bars");
    QString background = QStringLiteral("none");
    QString branding = QStringLiteral("logo");
    QString artist = QStringLiteral("Suno AI");

    bool operator==(const VisualizerStyle&) const = default;

    /// From an object with the fields' names as keys; what is missing or no text keeps its default.
    static VisualizerStyle fromJson(const QJsonObject& fields);
    QJsonObject toJson() const;

    /// The style that was last used; the default one where none is stored or what is stored cannot be read.
    static VisualizerStyle remembered(const Preferences& preferences);
    void remember(Preferences& preferences) const;

    /// Aspect, theme, wave and background in a row.
    QString summary() const;
};

} // namespace Video
} // namespace orvane
