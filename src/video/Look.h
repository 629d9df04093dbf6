#pragma once

#include <QSize>
#include <QString>

#include <array>

namespace orvane::Video {

/// What a video looks like.
struct Look
{
    /// The frame's shape.
    enum class Aspect
    {
        portrait,
        square,
        landscape,
    };

    static constexpr std::array allAspects{Aspect::portrait, Aspect::square, Aspect::landscape};

    Aspect aspect = Aspect::portrait;
    /// Frames in a second, above 0.
    int fps = 30;
    int bars = 48;
    /// Paint the artwork's square.
    bool showArtwork = true;
    /// Paint the pill with the product's site.
    bool showWatermark = true;

    bool operator==(const Look&) const = default;
};

/// The name under which the preferences hold the `rawValue` of the aspect.
inline constexpr char aspectPreference[] = "outputVideoAspect";

/// "9:16", "1:1" or "16:9".
QString rawValue(Look::Aspect aspect);

/// The aspect of that raw value; portrait for any other text.
Look::Aspect aspectNamed(const QString& rawValue);

/// The frame in pixels.
QSize size(Look::Aspect aspect);

} // namespace orvane::Video
