#pragma once

#include <QRgb>

namespace orvane::Video {

/// The colours of every video, in sRGB.
struct Palette
{
    static constexpr QRgb background = qRgb(8, 9, 14);
    static constexpr QRgb accentTop = qRgb(255, 122, 24);
    static constexpr QRgb accentEnd = qRgb(175, 0, 45);
    static constexpr QRgb text = qRgb(243, 244, 246);
    static constexpr QRgb muted = qRgb(156, 163, 175);
};

} // namespace orvane::Video
