#include "main/Chrome/ProgressLine.h"

#include "main/Chrome/Paint.h"
#include "main/Chrome/Theme.h"

#include <QAccessible>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace orvane {
namespace {

constexpr int breadth = 6;
constexpr int leastWidth = 48;

QPainterPath capsule(const QRectF& rect)
{
    QPainterPath path;
    path.addRoundedRect(rect, rect.height() / 2, rect.height() / 2);
    return path;
}

} // namespace

ProgressLine::ProgressLine(QWidget* parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ProgressLine::setValue(double value)
{
    const double held = std::isnan(value) ? 0 : std::clamp(value, 0.0, 1.0);
    if (held == value_)
        return;
    value_ = held;
    QAccessibleValueChangeEvent event(this, int(std::lround(value_ * 100)));
    QAccessible::updateAccessibility(&event);
    update();
    Q_EMIT valueChanged(value_);
}

QSize ProgressLine::sizeHint() const
{
    return {leastWidth, breadth};
}

void ProgressLine::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRectF track = rect();
    Paint::box(painter, track, track.height() / 2, Theme::cardBorder);
    // The first step already shows as a dot, the capsule's shortest form.
    const double done = value_ > 0 ? std::max<double>(track.width() * value_, track.height()) : 0;
    const double start = layoutDirection() == Qt::RightToLeft ? track.right() - done : track.left();
    const QPainterPath filled = capsule(track).intersected(capsule(QRectF(start, track.top(), done, track.height())));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(filled, isEnabled() ? Theme::accent : Theme::textMuted);
}

} // namespace orvane
