#pragma once

#include <QColor>
#include <QFont>

class QApplication;

namespace orvane {

/// The program's colours, fonts and distances. A point is one unit of the window (a device-independent pixel); texts
/// grow with the font size that the user chose for the desktop.
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

/// Ground of fields, lists and logs: between the window and a card.
inline constexpr QColor field{0x0C, 0x0E, 0x16};
/// Ground of plain buttons and chips, at rest, under the pointer and held down.
inline constexpr QColor raised{0x1A, 0x1F, 0x2D};
inline constexpr QColor raisedHover{0x24, 0x2B, 0x3D};
inline constexpr QColor raisedPressed{0x15, 0x19, 0x25};
/// Outline of what can be operated: stronger than a card's.
inline constexpr QColor controlBorder{0x2F, 0x37, 0x4B};
/// Ground of selected text and rows; `textPrimary` stands on it.
inline constexpr QColor selection{0x5A, 0x2C, 0x19};
/// Text on `accent`, `accentTop` and `bad`, where white would be too faint to read.
inline constexpr QColor onAccent = bg;
/// Placeholders: the faintest text that is still meant to be read.
inline constexpr QColor textHint{0x86, 0x8D, 0x9B};
inline constexpr QColor textDisabled{0x56, 0x5D, 0x6B};

/// Distances in points.
namespace Space {
inline constexpr int tight = 4;
inline constexpr int small = 8;
inline constexpr int medium = 12;
inline constexpr int large = 16;
} // namespace Space

/// Corner radii in points.
namespace Radius {
inline constexpr double card = 12;
inline constexpr double control = 8;
inline constexpr double mark = 5;
} // namespace Radius

/// The user interface's font at `size` points.
QFont font(double size, QFont::Weight weight = QFont::Normal);

/// Heads of sections: small, letter-spaced, drawn in `textSecond`.
QFont heading();
/// Everything that is read: 13 points.
QFont body();
/// Notes and captions: 11 points.
QFont small();

/// The system's monospaced font at `size` points, in regular weight.
QFont mono(double size);

/// Gives the whole application the dark palette, style and tool tips, whatever the system says.
void apply(QApplication& application);

} // namespace Theme
} // namespace orvane
