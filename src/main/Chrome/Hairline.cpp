#include "main/Chrome/Hairline.h"

#include "main/Chrome/Theme.h"

#include <QPainter>

namespace orvane {

Hairline::Hairline(Qt::Orientation orientation, QWidget* parent)
    : QWidget(parent)
{
    if (orientation == Qt::Horizontal) {
        setFixedHeight(1);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    } else {
        setFixedWidth(1);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    }
}

void Hairline::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(rect(), Theme::cardBorder);
}

} // namespace orvane
