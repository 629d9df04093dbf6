#include "main/Chrome/TickBox.h"

#include "main/Chrome/Paint.h"
#include "main/Chrome/StyleParts.h"
#include "main/Chrome/TextBlock.h"
#include "main/Chrome/Theme.h"

#include <QPainter>
#include <QStyleOptionButton>

#include <algorithm>

namespace orvane {
namespace {

constexpr int side = 16;
constexpr int gap = Theme::Space::small;
// Room for the focus ring, which stands around box and text.
constexpr int margin = 3;
constexpr int leastTextWidth = 48;

int besidesText()
{
    return 2 * margin + side + gap;
}

TextBlock textOf(const TickBox& box)
{
    return {.text = box.text(), .font = box.font(), .direction = box.layoutDirection()};
}

int heightFor(const QSize& text)
{
    return std::max(side, text.height()) + 2 * margin;
}

} // namespace

TickBox::TickBox(const QString& text, QWidget* parent)
    : QCheckBox(text, parent)
{
    setFont(Theme::body());
    setAttribute(Qt::WA_Hover);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

QSize TickBox::sizeHint() const
{
    const QSize text = textOf(*this).natural();
    return {text.width() + besidesText(), heightFor(text)};
}

QSize TickBox::minimumSizeHint() const
{
    const QSize natural = sizeHint();
    return {std::min(natural.width(), besidesText() + leastTextWidth), natural.height()};
}

int TickBox::heightForWidth(int width) const
{
    return heightFor(textOf(*this).size(width - besidesText()));
}

void TickBox::paintEvent(QPaintEvent*)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    QPainter painter(this);
    const QRect content = rect().adjusted(margin, margin, -margin, -margin);
    const int line = std::max(side, fontMetrics().height());
    option.rect = QStyle::visualRect(layoutDirection(), content,
                                     QRect(content.left(), content.top() + (line - side) / 2, side, side));
    StyleParts::checkIndicator(painter, option);

    const TextBlock text = textOf(*this);
    const QRect beside = QStyle::visualRect(layoutDirection(), content, content.adjusted(side + gap, 0, 0, 0));
    const int lowered = std::max(0, line - fontMetrics().height()) / 2;
    text.draw(painter, beside.translated(0, lowered), isEnabled() ? Theme::textPrimary : Theme::textDisabled);
    if (StyleParts::showsFocusRing(option))
        Paint::box(painter, rect(), Theme::Radius::mark, {}, Theme::accent, 1.5);
}

} // namespace orvane
