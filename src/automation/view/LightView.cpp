#include "automation/view/LightView.h"

#include "automation/view/StageLook.h"

#include <QPainter>

namespace orvane {
namespace {

constexpr int side = 16;

} // namespace

LightView::LightView(QWidget* parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void LightView::setState(State state)
{
    state_ = state;
    update();
}

QSize LightView::sizeHint() const
{
    return {side, side};
}

void LightView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    StageLook::drawMark(painter, rect(), state_);
}

} // namespace orvane
