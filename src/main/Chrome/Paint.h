#pragma once

#include <QColor>
#include <QRectF>

class QPainter;
class QString;

namespace orvane {

/// The strokes and shapes that all controls share. Rectangles are in points; lines lie on whole device pixels.
namespace Paint {

/// `from` at 0, `to` at 1.
QColor mixed(const QColor& from, const QColor& to, double share);

/// A filled rounded box with a line of `width` points inside its edge. An invalid colour leaves that part out.
void box(QPainter& painter, const QRectF& rect, double radius, const QColor& fill, const QColor& stroke = {},
         double width = 1);

/// As `box`, filled from `top` to `bottom`.
void gradientBox(QPainter& painter, const QRectF& rect, double radius, const QColor& top, const QColor& bottom);

/// The mark of keyboard focus, inside the edge of `rect`.
void focusRing(QPainter& painter, const QRectF& rect, double radius, const QColor& colour);

/// Text in the order of its own script, whatever the direction of the window. `flags` are those of QPainter::drawText,
/// and as there, the painter's direction tells which side left is, unless it is absolute.
void text(QPainter& painter, const QRect& rect, int flags, const QString& text);

/// A check mark that fills `rect`.
void tick(QPainter& painter, const QRectF& rect, const QColor& colour);

/// A cross that fills `rect`.
void cross(QPainter& painter, const QRectF& rect, const QColor& colour);

/// A short lying stroke in the middle of `rect`.
void dash(QPainter& painter, const QRectF& rect, const QColor& colour);

/// A small down-pointing mark in the middle of `rect`.
void chevron(QPainter& painter, const QRectF& rect, const QColor& colour);

/// The same, pointing to the left or to the right of the screen.
void chevronSideways(QPainter& painter, const QRectF& rect, bool pointsLeft, const QColor& colour);

/// The contrast of two opaque colours as accessibility guidelines reckon it: 1 (none) to 21 (black on white).
/// Source: WCAG 2.1, relative luminance.
double contrast(const QColor& one, const QColor& other);

} // namespace Paint
} // namespace orvane
