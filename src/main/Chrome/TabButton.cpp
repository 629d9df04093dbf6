#include "main/Chrome/TabButton.h"

#include "main/Chrome/Paint.h"
#include "main/Chrome/StyleParts.h"
#include "main/Chrome/Theme.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOption>

namespace orvane {
namespace {

constexpr int besidesTitle = Theme::Space::medium;
constexpr int aboveTitle = 7;
constexpr int markHeight = 2;

QColor groundOf(const TabButton& button)
{
    if (button.isActive())
        return Theme::raised;
    return button.isHovered() ? Paint::mixed(Theme::card, Theme::raised, 0.6) : Theme::card;
}

} // namespace

TabButton::TabButton(const QString& title, QWidget* parent)
    : QAbstractButton(parent)
{
    setText(title);
    setFont(Theme::font(12, QFont::Medium));
    setFocusPolicy(Qt::ClickFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void TabButton::setActive(bool isActive)
{
    if (isActive == isActive_)
        return;
    isActive_ = isActive;
    setFocusPolicy(isActive ? Qt::StrongFocus : Qt::ClickFocus);
    QAccessible::State changed;
    changed.selected = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
    update();
}

QSize TabButton::sizeHint() const
{
    const QSize title = fontMetrics().size(Qt::TextSingleLine, text());
    return {title.width() + 2 * besidesTitle, title.height() + 2 * aboveTitle};
}

void TabButton::setHovered(bool isHovered)
{
    isHovered_ = isHovered;
    update();
}

void TabButton::enterEvent(QEnterEvent* event)
{
    setHovered(true);
    QAbstractButton::enterEvent(event);
}

void TabButton::leaveEvent(QEvent* event)
{
    setHovered(false);
    QAbstractButton::leaveEvent(event);
}

void TabButton::keyPressEvent(QKeyEvent* event)
{
    const bool isPress = event->key() == Qt::Key_Space || event->key() == Qt::Key_Select;
    if (isPress)
        QAbstractButton::keyPressEvent(event);
    else
        event->ignore();
}

void TabButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    Paint::box(painter, rect(), Theme::Radius::control, groundOf(*this));
    painter.setPen(isActive_ || isHovered_ ? Theme::textPrimary : Theme::textSecond);
    Paint::text(painter, rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
    if (isActive_) {
        const QRectF mark(besidesTitle, height() - markHeight - 1.0, width() - 2 * besidesTitle, markHeight);
        Paint::box(painter, mark, markHeight / 2.0, Theme::accent);
    }
    QStyleOption option;
    option.initFrom(this);
    if (StyleParts::showsFocusRing(option))
        Paint::focusRing(painter, rect(), Theme::Radius::control, Theme::accent);
}

} // namespace orvane
