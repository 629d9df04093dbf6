#include "automation/view/Arrow.h"

#include "main/Chrome/Paint.h"
#include "main/Chrome/Theme.h"

#include <QPainter>

namespace orvane {
namespace {

constexpr int breadth = 16;

} // namespace

Arrow::Arrow(QWidget* parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
}

QSize Arrow::sizeHint() const
{
    return {breadth, breadth};
}

void Arrow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    Paint::chevronSideways(painter, rect(), isRightToLeft(), Theme::textMuted);
}

} // namespace orvane
