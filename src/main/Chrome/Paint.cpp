#include "main/Chrome/Paint.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>

#include <algorithm>
#include <cmath>

namespace orvane {
namespace {

constexpr int alignmentMask = int(Qt::AlignHorizontal_Mask | Qt::AlignVertical_Mask);

QPen roundPen(const QColor& colour, double width)
{
    return {colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

QPainter& smooth(QPainter& painter)
{
    painter.setRenderHint(QPainter::Antialiasing);
    return painter;
}

QPainterPath rounded(const QRectF& rect, double radius)
{
    QPainterPath path;
    path.addRoundedRect(rect, std::max(0.0, radius), std::max(0.0, radius));
    return path;
}

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour)
{
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

} // namespace

QColor Paint::mixed(const QColor& from, const QColor& to, double share)
{
    const auto blend = [share](float a, float b) { return float(a + (b - a) * share); };
    return QColor::fromRgbF(blend(from.redF(), to.redF()), blend(from.greenF(), to.greenF()),
                            blend(from.blueF(), to.blueF()), blend(from.alphaF(), to.alphaF()));
}

void Paint::box(QPainter& painter, const QRectF& rect, double radius, const QColor& fill, const QColor& stroke,
                double width)
{
    painter.save();
    smooth(painter);
    if (fill.isValid())
        painter.fillPath(rounded(rect, radius), fill);
    if (stroke.isValid()) {
        // The line is filled, not drawn by a pen: so its edges lie on whole pixels and square corners stay square.
        QPainterPath line = rounded(rect, radius);
        line.addPath(rounded(rect.adjusted(width, width, -width, -width), radius - width));
        painter.fillPath(line, stroke);
    }
    painter.restore();
}

void Paint::gradientBox(QPainter& painter, const QRectF& rect, double radius, const QColor& top, const QColor& bottom)
{
    QLinearGradient gradient(rect.topLeft(), rect.bottomLeft());
    gradient.setColorAt(0, top);
    gradient.setColorAt(1, bottom);
    painter.save();
    smooth(painter).setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawRoundedRect(rect, radius, radius);
    painter.restore();
}

void Paint::focusRing(QPainter& painter, const QRectF& rect, double radius, const QColor& colour)
{
    box(painter, rect, radius, {}, colour, 2);
}

void Paint::cross(QPainter& painter, const QRectF& rect, const QColor& colour)
{
    const QRectF ends =
        rect.adjusted(0.3 * rect.width(), 0.3 * rect.height(), -0.3 * rect.width(), -0.3 * rect.height());
    painter.save();
    smooth(painter).setPen(roundPen(colour, std::max(1.5, rect.width() / 8)));
    painter.drawLine(ends.topLeft(), ends.bottomRight());
    painter.drawLine(ends.topRight(), ends.bottomLeft());
    painter.restore();
}

void Paint::dash(QPainter& painter, const QRectF& rect, const QColor& colour)
{
    const QPointF half(rect.width() / 5, 0);
    painter.save();
    smooth(painter).setPen(roundPen(colour, std::max(1.5, rect.width() / 8)));
    painter.drawLine(rect.center() - half, rect.center() + half);
    painter.restore();
}

void Paint::text(QPainter& painter, const QRect& rect, int flags, const QString& text)
{
    const Qt::LayoutDirection direction = painter.layoutDirection();
    const Qt::Alignment placed = QStyle::visualAlignment(direction, Qt::Alignment(flags & alignmentMask));
    painter.setLayoutDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    painter.drawText(rect, (flags & ~alignmentMask) | int(placed | Qt::AlignAbsolute), text);
    painter.setLayoutDirection(direction);
}

void Paint::tick(QPainter& painter, const QRectF& rect, const QColor& colour)
{
    const auto at = [&rect](double x, double y) {
        return QPointF(rect.left() + x * rect.width(), rect.top() + y * rect.height());
    };
    const QPointF points[] = {at(0.22, 0.53), at(0.42, 0.73), at(0.79, 0.29)};
    painter.save();
    smooth(painter).setPen(roundPen(colour, std::max(1.5, rect.width() / 8)));
    painter.drawPolyline(points, 3);
    painter.restore();
}

void Paint::chevron(QPainter& painter, const QRectF& rect, const QColor& colour)
{
    const QPointF middle = rect.center();
    const QPointF points[] = {middle + QPointF(-3.5, -1.75), middle + QPointF(0, 1.75), middle + QPointF(3.5, -1.75)};
    painter.save();
    smooth(painter).setPen(roundPen(colour, 1.5));
    painter.drawPolyline(points, 3);
    painter.restore();
}

void Paint::chevronSideways(QPainter& painter, const QRectF& rect, bool pointsLeft, const QColor& colour)
{
    painter.save();
    painter.translate(rect.center());
    painter.rotate(pointsLeft ? 90 : -90);
    chevron(painter, QRectF(-rect.height() / 2, -rect.width() / 2, rect.height(), rect.width()), colour);
    painter.restore();
}

double Paint::contrast(const QColor& one, const QColor& other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace orvane
