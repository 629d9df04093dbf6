#include "main/Chrome/StyleParts.h"

#include "main/Chrome/Paint.h"
#include "main/Chrome/Theme.h"

#include <QPainter>
#include <QStyleOption>

#include <algorithm>

namespace orvane {
namespace {

constexpr int shortestThumb = 32;
constexpr double thumbInset = 3;

bool has(const QStyleOption& option, QStyle::StateFlag flag)
{
    return option.state.testFlag(flag);
}

bool isEnabled(const QStyleOption& option)
{
    return has(option, QStyle::State_Enabled);
}

QColor raisedGround(const QStyleOption& option)
{
    if (!isEnabled(option))
        return Theme::card;
    if (has(option, QStyle::State_Sunken))
        return Theme::raisedPressed;
    return has(option, QStyle::State_MouseOver) ? Theme::raisedHover : Theme::raised;
}

QColor operableOutline(const QStyleOption& option)
{
    return isEnabled(option) ? Theme::controlBorder : Theme::cardBorder;
}

void ring(QPainter& painter, const QStyleOption& option, double radius, const QColor& colour)
{
    if (StyleParts::showsFocusRing(option))
        Paint::focusRing(painter, option.rect, radius, colour);
}

struct Gradient
{
    QColor top;
    QColor bottom;
};

Gradient gradientOf(const QStyleOption& option, bool isDanger)
{
    Gradient tones{.top = Theme::accentTop, .bottom = Theme::accent};
    if (isDanger)
        tones = {.top = Theme::bad, .bottom = Paint::mixed(Theme::bad, Theme::accentEnd, 0.25)};
    const auto shift = [&tones](const QColor& towards, double share) {
        tones = {Paint::mixed(tones.top, towards, share), Paint::mixed(tones.bottom, towards, share)};
    };
    if (!isEnabled(option))
        shift(Theme::card, 0.72);
    else if (has(option, QStyle::State_Sunken))
        shift(Theme::bg, 0.18);
    else if (has(option, QStyle::State_MouseOver))
        shift(Theme::textPrimary, 0.14);
    return tones;
}

struct Mark
{
    QColor fill;
    QColor stroke;
    QColor sign;
};

Mark markOf(const QStyleOption& option)
{
    const bool isSet = has(option, QStyle::State_On) || has(option, QStyle::State_NoChange);
    if (!isSet)
        return {.fill = raisedGround(option), .stroke = operableOutline(option), .sign = {}};
    if (!isEnabled(option))
        return {.fill = Theme::cardBorder, .stroke = Theme::cardBorder, .sign = Theme::textMuted};
    const Gradient tones = gradientOf(option, false);
    return {.fill = tones.bottom, .stroke = tones.bottom, .sign = Theme::onAccent};
}

QRectF squareIn(const QRect& rect)
{
    const double side = std::min(rect.width(), rect.height());
    return {rect.left() + (rect.width() - side) / 2, rect.top() + (rect.height() - side) / 2, side, side};
}

} // namespace

bool StyleParts::showsFocusRing(const QStyleOption& option)
{
    return has(option, QStyle::State_HasFocus) && has(option, QStyle::State_KeyboardFocusChange);
}

void StyleParts::field(QPainter& painter, const QStyleOption& option)
{
    const bool isFocused = has(option, QStyle::State_HasFocus) && isEnabled(option);
    Paint::box(painter, option.rect, Theme::Radius::control, isEnabled(option) ? Theme::field : Theme::card,
               isFocused ? Theme::accent : Theme::cardBorder);
}

void StyleParts::plainButton(QPainter& painter, const QStyleOption& option)
{
    Paint::box(painter, option.rect, Theme::Radius::control, raisedGround(option), operableOutline(option));
    ring(painter, option, Theme::Radius::control, Theme::accent);
}

void StyleParts::accentButton(QPainter& painter, const QStyleOption& option, bool isDanger)
{
    const Gradient tones = gradientOf(option, isDanger);
    Paint::gradientBox(painter, option.rect, Theme::Radius::control, tones.top, tones.bottom);
    if (!showsFocusRing(option))
        return;
    // On its own colour a ring in that colour would not show: a light one with a dark gap does.
    const QRectF inner = QRectF(option.rect).adjusted(2, 2, -2, -2);
    Paint::focusRing(painter, option.rect, Theme::Radius::control, Theme::textPrimary);
    Paint::box(painter, inner, Theme::Radius::control - 2, {}, Theme::bg, 1.5);
}

void StyleParts::checkIndicator(QPainter& painter, const QStyleOption& option)
{
    const QRectF box = squareIn(option.rect);
    const Mark mark = markOf(option);
    Paint::box(painter, box, Theme::Radius::mark, mark.fill, mark.stroke);
    if (has(option, QStyle::State_On))
        Paint::tick(painter, box, mark.sign);
    else if (has(option, QStyle::State_NoChange))
        Paint::box(painter, QRectF(box.left() + 4, box.center().y() - 1, box.width() - 8, 2), 1, mark.sign);
}

void StyleParts::radioIndicator(QPainter& painter, const QStyleOption& option)
{
    const QRectF box = squareIn(option.rect);
    const Mark mark = markOf(option);
    Paint::box(painter, box, box.width() / 2, mark.fill, mark.stroke);
    if (has(option, QStyle::State_On))
        Paint::box(painter, box.adjusted(5, 5, -5, -5), box.width() / 2 - 5, mark.sign);
}

void StyleParts::popUpFrame(QPainter& painter, const QStyleOption& option)
{
    Paint::box(painter, option.rect, 0, Theme::card, Theme::controlBorder);
}

void StyleParts::header(QPainter& painter, const QStyleOption& option)
{
    painter.fillRect(option.rect, Theme::card);
    const QRect box = option.rect;
    painter.fillRect(QRect(box.left(), box.bottom(), box.width(), 1), Theme::cardBorder);
    const int edge = option.direction == Qt::RightToLeft ? box.left() : box.right();
    painter.fillRect(QRect(edge, box.top() + 5, 1, std::max(0, box.height() - 10)), Theme::controlBorder);
}

void StyleParts::separator(QPainter& painter, const QStyleOption& option)
{
    const QRect box = option.rect.adjusted(Theme::Space::small, 0, -Theme::Space::small, 0);
    painter.fillRect(QRect(box.left(), box.center().y(), box.width(), 1), Theme::controlBorder);
}

void StyleParts::chosenRow(QPainter& painter, const QStyleOption& option)
{
    Paint::box(painter, option.rect, Theme::Radius::mark, Theme::raisedHover);
}

void StyleParts::arrow(QPainter& painter, const QStyleOption& option, QStyle::PrimitiveElement element)
{
    const QColor colour = isEnabled(option) ? Theme::textSecond : Theme::textDisabled;
    const bool isLeft = element == QStyle::PE_IndicatorArrowLeft;
    if (isLeft || element == QStyle::PE_IndicatorArrowRight)
        return Paint::chevronSideways(painter, option.rect, isLeft, colour);
    painter.save();
    painter.translate(QRectF(option.rect).center());
    painter.rotate(element == QStyle::PE_IndicatorArrowUp ? 180 : 0);
    Paint::chevron(painter, QRectF(-6, -6, 12, 12), colour);
    painter.restore();
}

void StyleParts::comboBox(QPainter& painter, const QStyleOptionComboBox& option)
{
    Paint::box(painter, option.rect, Theme::Radius::control, raisedGround(option), operableOutline(option));
    ring(painter, option, Theme::Radius::control, Theme::accent);
    const QRect arrow = QStyle::visualRect(
        option.direction, option.rect, QRect(option.rect.right() - 25, option.rect.top(), 20, option.rect.height()));
    Paint::chevron(painter, arrow, isEnabled(option) ? Theme::textSecond : Theme::textDisabled);
}

void StyleParts::scrollBar(QPainter& painter, const QStyleOptionSlider& option, const QRect& slider)
{
    if (option.maximum <= option.minimum)
        return;
    const bool isUsed = option.activeSubControls.testFlag(QStyle::SC_ScrollBarSlider) &&
                        (has(option, QStyle::State_MouseOver) || has(option, QStyle::State_Sunken));
    const QRectF thumb = QRectF(slider).adjusted(thumbInset, thumbInset, -thumbInset, -thumbInset);
    const double radius = std::min(thumb.width(), thumb.height()) / 2;
    Paint::box(painter, thumb, radius, isUsed ? Theme::textMuted : Theme::controlBorder);
}

QRect StyleParts::scrollBarPart(const QStyleOptionSlider& option, QStyle::SubControl part)
{
    const bool isAcross = option.orientation == Qt::Horizontal;
    const int length = isAcross ? option.rect.width() : option.rect.height();
    const qint64 range = qint64(option.maximum) - option.minimum;
    const qint64 share = range > 0 ? qint64(length) * option.pageStep / (range + option.pageStep) : length;
    const int thumb = int(std::clamp<qint64>(share, std::min(shortestThumb, length), length));
    const int start = QStyle::sliderPositionFromValue(option.minimum, option.maximum, option.sliderPosition,
                                                      length - thumb, option.upsideDown);
    const auto along = [&](int from, int size) {
        const QRect span =
            isAcross ? QRect(from, 0, size, option.rect.height()) : QRect(0, from, option.rect.width(), size);
        return QStyle::visualRect(option.direction, option.rect, span.translated(option.rect.topLeft()));
    };
    switch (part) {
    case QStyle::SC_ScrollBarGroove:
        return option.rect;
    case QStyle::SC_ScrollBarSlider:
        return along(start, thumb);
    case QStyle::SC_ScrollBarSubPage:
        return along(0, start);
    case QStyle::SC_ScrollBarAddPage:
        return along(start + thumb, length - start - thumb);
    default:
        return {};
    }
}

QColor StyleParts::labelColour(const QStyleOption& option, bool isFilled)
{
    if (!isEnabled(option))
        return isFilled ? Theme::textSecond : Theme::textDisabled;
    return isFilled ? Theme::onAccent : Theme::textPrimary;
}

} // namespace orvane
