#pragma once

#include <QColor>
#include <QImage>

class QWidget;

namespace orvane::test {

/// What the widget paints on the window's ground, `scale` device pixels for each point.
QImage pictureOf(QWidget& widget, double scale = 1);

/// The colours differ by at most `tolerance` in each channel.
bool isNear(const QColor& one, const QColor& other, int tolerance = 2);

/// How many pixels have about that colour.
int countOf(const QImage& picture, const QColor& colour, int tolerance = 2);

/// The sum of red, green and blue over all pixels: how bright the picture is.
qint64 brightnessOf(const QImage& picture);

/// All pixels of the outermost `breadth` device pixels are the same in both pictures, which are of one size.
bool hasSameEdge(const QImage& one, const QImage& other, int breadth);

/// Shows the widget in a window of its own that has the focus.
bool showActive(QWidget& widget);

} // namespace orvane::test
