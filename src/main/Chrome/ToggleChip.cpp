#include "main/Chrome/ToggleChip.h"

#include "main/Chrome/Paint.h"
#include "main/Chrome/StyleParts.h"
#include "main/Chrome/Theme.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QPainter>
#include <QStyleOption>
#include <QToolTip>

#include <algorithm>

namespace orvane {
namespace {

constexpr int besidesText = 10;
constexpr int aboveText = 4;
constexpr int leastTextWidth = 24;

struct Tones
{
    QColor fill;
    QColor stroke;
    QColor text;
};

Tones tonesOf(bool isLit, bool isHovered, bool isEnabled)
{
    Tones tones{.fill = isHovered ? Theme::raisedHover : Theme::raised,
                .stroke = Theme::controlBorder,
                .text = isHovered ? Theme::textPrimary : Theme::textSecond};
    if (isLit) {
        tones = {.fill = Paint::mixed(Theme::card, Theme::accent, isHovered ? 0.26 : 0.18),
                 .stroke = Paint::mixed(Theme::card, Theme::accent, 0.7),
                 .text = Theme::accentTop};
    }
    if (!isEnabled) {
        tones = {.fill = Paint::mixed(tones.fill, Theme::card, 0.6),
                 .stroke = Paint::mixed(tones.stroke, Theme::card, 0.6),
                 .text = Theme::textDisabled};
    }
    return tones;
}

} // namespace

ToggleChip::ToggleChip(const QString& text, QWidget* parent)
    : QAbstractButton(parent)
{
    setText(text);
    setFont(Theme::font(12));
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ToggleChip::setLit(bool isLit)
{
    if (isLit == isLit_)
        return;
    isLit_ = isLit;
    QAccessible::State changed;
    changed.checked = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
    update();
}

void ToggleChip::setOpen(bool isOpen)
{
    isOpen_ = isOpen;
    update();
}

void ToggleChip::setChipFont(const QFont& font)
{
    setFont(font);
    updateGeometry();
}

QSize ToggleChip::sizeHint() const
{
    const QSize label = fontMetrics().size(Qt::TextSingleLine, shownText());
    return {label.width() + 2 * besidesText + trailingRoom(), label.height() + 2 * aboveText};
}

QSize ToggleChip::minimumSizeHint() const
{
    const QSize natural = sizeHint();
    return {std::min(natural.width(), leastTextWidth + 2 * besidesText + trailingRoom()), natural.height()};
}

QRect ToggleChip::textRect() const
{
    const QRect beside = rect().adjusted(besidesText, 0, -besidesText - trailingRoom(), 0);
    return QStyle::visualRect(layoutDirection(), rect(), beside);
}

bool ToggleChip::event(QEvent* event)
{
    const bool isCut = fontMetrics().horizontalAdvance(shownText()) > textRect().width();
    if (event->type() != QEvent::ToolTip || !toolTip().isEmpty() || !isCut)
        return QAbstractButton::event(event);
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), shownText().toHtmlEscaped(), this);
    return true;
}

void ToggleChip::paintEvent(QPaintEvent*)
{
    QStyleOption option;
    option.initFrom(this);
    const bool isHovered = option.state.testFlag(QStyle::State_MouseOver) && !isDown();
    const Tones tones = tonesOf(isLit_ || isOpen_, isHovered, isEnabled());
    QPainter painter(this);
    Paint::box(painter, rect(), height() / 2.0, tones.fill, tones.stroke);
    painter.setPen(tones.text);
    Paint::text(painter, textRect(), Qt::AlignCenter | Qt::TextSingleLine,
                fontMetrics().elidedText(shownText(), Qt::ElideRight, textRect().width()));
    if (trailingRoom() > 0) {
        const QRect trailing(rect().right() + 1 - trailingRoom() - besidesText / 2, 0, trailingRoom(), height());
        drawTrailing(painter, QStyle::visualRect(layoutDirection(), rect(), trailing), tones.text);
    }
    if (StyleParts::showsFocusRing(option))
        Paint::focusRing(painter, rect(), height() / 2.0, Theme::accent);
}

void ToggleChip::drawTrailing(QPainter&, const QRect&, const QColor&) const {}

} // namespace orvane
