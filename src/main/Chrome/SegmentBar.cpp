#include "main/Chrome/SegmentBar.h"

#include "main/Chrome/Paint.h"
#include "main/Chrome/StyleParts.h"
#include "main/Chrome/Theme.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOption>
#include <QToolTip>

#include <algorithm>
#include <numeric>

namespace orvane {
namespace {

constexpr int inset = 3;
constexpr int besidesTitle = 10;
constexpr int aboveTitle = 4;
constexpr int leastItemWidth = 28;
constexpr double itemRadius = Theme::Radius::control - 2;

bool isHeldTogether(const QList<int>& natural, int share)
{
    return std::all_of(natural.begin(), natural.end(), [share](int width) { return width <= share; });
}

// The widths of `count` equal parts of `room` that add up to it.
QList<int> equalParts(int room, int count)
{
    QList<int> parts;
    for (int index = 0; index < count; ++index)
        parts.append(room * (index + 1) / count - room * index / count);
    return parts;
}

} // namespace

SegmentBar::SegmentBar(QWidget* parent)
    : QWidget(parent)
{
    setFont(Theme::font(12, QFont::Medium));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

SegmentBar::SegmentBar(const QList<Item>& items, QWidget* parent)
    : SegmentBar(parent)
{
    setItems(items);
}

void SegmentBar::setItems(const QList<Item>& items)
{
    items_ = items;
    hovered_ = none;
    pressed_ = -1;
    updateGeometry();
    update();
}

void SegmentBar::setSelectedTag(int tag)
{
    if (tag == selectedTag_)
        return;
    selectedTag_ = tag;
    QAccessibleEvent event(this, QAccessible::Selection);
    event.setChild(selectedIndex());
    QAccessible::updateAccessibility(&event);
    update();
}

int SegmentBar::selectedIndex() const
{
    const auto isSelected = [this](const Item& item) { return item.tag == selectedTag_; };
    const auto found = std::find_if(items_.begin(), items_.end(), isSelected);
    return found == items_.end() ? -1 : int(found - items_.begin());
}

void SegmentBar::choose(int index)
{
    if (!canChoose(index) || items_.at(index).tag == selectedTag_)
        return;
    setSelectedTag(items_.at(index).tag);
    Q_EMIT selectionChanged(selectedTag_);
}

bool SegmentBar::canChoose(int index) const
{
    return index >= 0 && index < items_.size() && items_.at(index).isEnabled;
}

int SegmentBar::naturalWidth(int index) const
{
    return std::max(leastItemWidth, fontMetrics().horizontalAdvance(items_.at(index).title) + 2 * besidesTitle);
}

QList<int> SegmentBar::widths(int room) const
{
    const int count = int(items_.size());
    QList<int> natural;
    for (int index = 0; index < count; ++index)
        natural.append(naturalWidth(index));
    if (isHeldTogether(natural, room / count))
        return equalParts(room, count);

    const int wanted = std::accumulate(natural.begin(), natural.end(), 0);
    if (wanted <= room) {
        const QList<int> rest = equalParts(room - wanted, count);
        std::transform(natural.begin(), natural.end(), rest.begin(), natural.begin(), std::plus<>());
        return natural;
    }
    QList<int> squeezed;
    int before = 0;
    for (const int width : natural) {
        squeezed.append(int(qint64(before + width) * room / wanted - qint64(before) * room / wanted));
        before += width;
    }
    return squeezed;
}

QRect SegmentBar::itemRect(int index) const
{
    const QRect room = rect().adjusted(inset, inset, -inset, -inset);
    const QList<int> all = widths(room.width());
    const int before = std::accumulate(all.begin(), all.begin() + index, 0);
    const QRect item(room.left() + before, room.top(), all.at(index), room.height());
    return QStyle::visualRect(layoutDirection(), room, item);
}

int SegmentBar::indexAt(const QPoint& position) const
{
    for (int index = 0; index < items_.size(); ++index) {
        if (itemRect(index).contains(position))
            return index;
    }
    return -1;
}

QSize SegmentBar::sizeHint() const
{
    int width = 2 * inset;
    for (int index = 0; index < items_.size(); ++index)
        width += naturalWidth(index);
    return {width, std::max(30, fontMetrics().height() + 2 * (aboveTitle + inset))};
}

QSize SegmentBar::minimumSizeHint() const
{
    return {2 * inset + leastItemWidth * int(items_.size()), sizeHint().height()};
}

bool SegmentBar::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    auto* help = static_cast<QHelpEvent*>(event);
    const int index = indexAt(help->pos());
    const bool isCut = index >= 0 && naturalWidth(index) > itemRect(index).width();
    if (!isCut)
        return QWidget::event(event);
    QToolTip::showText(help->globalPos(), items_.at(index).title.toHtmlEscaped(), this, itemRect(index));
    return true;
}

void SegmentBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    Paint::box(painter, rect(), Theme::Radius::control, Theme::field, Theme::cardBorder);
    for (int index = 0; index < items_.size(); ++index)
        drawItem(painter, index);
    QStyleOption option;
    option.initFrom(this);
    if (StyleParts::showsFocusRing(option))
        Paint::focusRing(painter, rect(), Theme::Radius::control, Theme::accent);
}

void SegmentBar::drawItem(QPainter& painter, int index) const
{
    const Item& item = items_.at(index);
    const QRect box = itemRect(index);
    const bool isSelected = item.tag == selectedTag_;
    QColor text = isEnabled() && item.isEnabled ? Theme::textSecond : Theme::textDisabled;
    if (isSelected) {
        const QColor dimmed = Paint::mixed(Theme::accent, Theme::card, 0.72);
        Paint::box(painter, box, itemRadius, isEnabled() ? Theme::accent : dimmed);
        text = isEnabled() ? Theme::onAccent : Theme::textSecond;
    } else if (isEnabled() && item.isEnabled && item.tag == hovered_) {
        Paint::box(painter, box, itemRadius, Theme::raisedHover);
        text = Theme::textPrimary;
    }
    painter.setFont(font());
    painter.setPen(text);
    const int room = box.width() - besidesTitle;
    Paint::text(painter, box, Qt::AlignCenter | Qt::TextSingleLine,
                fontMetrics().elidedText(item.title, Qt::ElideRight, room));
}

void SegmentBar::setHovered(int tag)
{
    if (tag == hovered_)
        return;
    hovered_ = tag;
    update();
}

void SegmentBar::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        pressed_ = indexAt(event->position().toPoint());
}

void SegmentBar::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const int released = indexAt(event->position().toPoint());
    if (released == pressed_)
        choose(released);
    pressed_ = -1;
}

void SegmentBar::mouseMoveEvent(QMouseEvent* event)
{
    const int index = indexAt(event->position().toPoint());
    setHovered(index < 0 ? none : items_.at(index).tag);
}

void SegmentBar::leaveEvent(QEvent* event)
{
    setHovered(none);
    QWidget::leaveEvent(event);
}

int SegmentBar::nextFrom(int index, int step) const
{
    int next = index + step;
    while (next >= 0 && next < items_.size() && !canChoose(next))
        next += step;
    return canChoose(next) ? next : std::max(0, selectedIndex());
}

int SegmentBar::indexFor(int key) const
{
    const int forward = layoutDirection() == Qt::RightToLeft ? Qt::Key_Left : Qt::Key_Right;
    const int backward = layoutDirection() == Qt::RightToLeft ? Qt::Key_Right : Qt::Key_Left;
    if (key == forward || key == Qt::Key_Down)
        return nextFrom(selectedIndex(), +1);
    if (key == backward || key == Qt::Key_Up)
        return nextFrom(selectedIndex(), -1);
    if (key == Qt::Key_Home)
        return nextFrom(-1, +1);
    return key == Qt::Key_End ? nextFrom(int(items_.size()), -1) : -1;
}

void SegmentBar::keyPressEvent(QKeyEvent* event)
{
    const int index = indexFor(event->key());
    if (index < 0)
        return QWidget::keyPressEvent(event);
    choose(index);
}

} // namespace orvane
