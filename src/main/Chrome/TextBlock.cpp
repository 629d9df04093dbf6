#include "main/Chrome/TextBlock.h"

#include <QFontMetrics>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace orvane {
namespace {

constexpr double unlimited = 1 << 20;

// A sentence keeps the direction of its own script, also in a layout of the other one; only its edge is the layout's.
QTextOption optionOf(const TextBlock& block)
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(block.text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    option.setAlignment(Qt::AlignAbsolute | (block.direction == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft));
    return option;
}

QSizeF layOut(QTextLayout& layout, double width)
{
    QSizeF size(0, 0);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        line.setPosition(QPointF(0, size.height()));
        size = {std::max(size.width(), line.naturalTextWidth()), size.height() + line.height()};
    }
    layout.endLayout();
    return size;
}

QSize whole(const QSizeF& size)
{
    return {int(std::ceil(size.width())), int(std::ceil(size.height()))};
}

} // namespace

QSize TextBlock::size(int width) const
{
    QTextLayout layout(text, font);
    layout.setTextOption(optionOf(*this));
    return whole(layOut(layout, std::max(1, width)));
}

TextBlock TextBlock::held(int width, int mostLines) const
{
    QTextLayout layout(text, font);
    layout.setTextOption(optionOf(*this));
    layOut(layout, std::max(1, width));
    if (layout.lineCount() <= mostLines)
        return *this;
    const int last = layout.lineAt(mostLines - 1).textStart();
    TextBlock shorter = *this;
    shorter.text = text.left(last) + QFontMetrics(font).elidedText(text.mid(last), Qt::ElideRight, width);
    return shorter;
}

QSize TextBlock::natural() const
{
    QTextLayout layout(text, font);
    QTextOption option = optionOf(*this);
    option.setAlignment(Qt::AlignAbsolute | Qt::AlignLeft);
    layout.setTextOption(option);
    return whole(layOut(layout, unlimited));
}

void TextBlock::draw(QPainter& painter, const QRectF& rect, const QColor& colour) const
{
    QTextLayout layout(text, font, painter.device());
    layout.setTextOption(optionOf(*this));
    layOut(layout, std::max(1.0, rect.width()));
    painter.setPen(colour);
    layout.draw(&painter, rect.topLeft());
}

} // namespace orvane
