#pragma once

#include <QColor>
#include <QFont>

class QApplication;

namespace orvane {

/// The program's colours and its fonts.
namespace Theme {

inline constexpr QColor bg{0x08, 0x09, 0x0E};
inline constexpr QColor card{0x11, 0x14, 0x1E};
inline constexpr QColor cardBorder{0x1D, 0x23, 0x34};
inline constexpr QColor accent{0xF2, 0x66, 0x22};
inline constexpr QColor accentTop{0xFF, 0x7A, 0x18};
inline constexpr QColor accentEnd{0xAF, 0x00, 0x2D};
inline constexpr QColor textPrimary{0xF3, 0xF4, 0xF6};
inline constexpr QColor textSecond{0x9C, 0xA3, 0xAF};
inline constexpr QColor textMuted{0x6B, 0x72, 0x80};
inline constexpr QColor ok{0x34, 0xD3, 0x99};
inline constexpr QColor bad{0xFC, 0xA5, 0xA5};

/// The system's monospaced font at `size` points, in regular weight.
QFont mono(double size);

/// Gives the whole application the dark palette, style and tool tips, whatever the system says.
void apply(QApplication& application);

} // namespace Theme
} // namespace orvane
