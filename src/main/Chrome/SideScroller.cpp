#include "main/Chrome/SideScroller.h"

#include "main/Chrome/Paint.h"

#include <QLinearGradient>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QWheelEvent>

#include <algorithm>
#include <cstdlib>

namespace orvane {
namespace {

constexpr int fadeWidth = 32;
constexpr int markWidth = 8;

/// Lets the row run out into the ground's colour at one end.
class Fade final : public QWidget
{
public:
    Fade(bool isLeading, const QColor& ground, QWidget* parent)
        : QWidget(parent)
        , isLeading_(isLeading)
        , ground_(ground)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        hide();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        const bool solidAtLeft = isLeading_ != isRightToLeft();
        QLinearGradient gradient(solidAtLeft ? 0 : width(), 0, solidAtLeft ? width() : 0, 0);
        QColor clear = ground_;
        clear.setAlpha(0);
        gradient.setColorAt(0, ground_);
        gradient.setColorAt(0.35, ground_);
        gradient.setColorAt(1, clear);
        QPainter painter(this);
        painter.fillRect(rect(), gradient);
        const QRectF mark(solidAtLeft ? 0 : width() - markWidth, 0, markWidth, height());
        Paint::chevronSideways(painter, mark, solidAtLeft, Theme::textSecond);
    }

private:
    bool isLeading_;
    QColor ground_;
};

} // namespace

SideScroller::SideScroller(QWidget* track, const QColor& ground, QWidget* parent)
    : QWidget(parent)
    , track_(track)
    , scroller_(new QScrollArea(this))
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    buildScroller();
    buildFades(ground);
}

void SideScroller::buildScroller()
{
    scroller_->setFrameShape(QFrame::NoFrame);
    scroller_->setFocusPolicy(Qt::NoFocus);
    scroller_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroller_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroller_->setWidgetResizable(true);
    scroller_->setWidget(track_);
    scroller_->viewport()->installEventFilter(this);
    scroller_->viewport()->setAutoFillBackground(false);
    track_->setAutoFillBackground(false);
}

void SideScroller::buildFades(const QColor& ground)
{
    fadeLeading_ = new Fade(true, ground, this);
    fadeTrailing_ = new Fade(false, ground, this);
    QScrollBar* bar = scroller_->horizontalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, &SideScroller::updateFades);
    connect(bar, &QScrollBar::rangeChanged, this, &SideScroller::updateFades);
}

void SideScroller::scrollIntoView(const QWidget* view)
{
    // The scroll area's own way to show a widget reckons from the left in either script.
    const QRect box = view->geometry();
    const int start = isRightToLeft() ? track_->width() - box.right() - 1 : box.left();
    QScrollBar* bar = scroller_->horizontalScrollBar();
    const int last = start + box.width() + fadeWidth - scroller_->viewport()->width();
    bar->setValue(std::min(std::max(bar->value(), last), std::max(0, start - fadeWidth)));
}

QSize SideScroller::sizeHint() const
{
    return track_->sizeHint();
}

QSize SideScroller::minimumSizeHint() const
{
    return {std::min(2 * fadeWidth, track_->sizeHint().width()), track_->sizeHint().height()};
}

void SideScroller::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    placeParts();
}

void SideScroller::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        placeParts();
}

void SideScroller::placeParts()
{
    scroller_->setGeometry(rect());
    const QRect leading(0, 0, fadeWidth, height());
    fadeLeading_->setGeometry(QStyle::visualRect(layoutDirection(), rect(), leading));
    const QRect trailing(width() - fadeWidth, 0, fadeWidth, height());
    fadeTrailing_->setGeometry(QStyle::visualRect(layoutDirection(), rect(), trailing));
    updateFades();
}

void SideScroller::updateFades()
{
    const QScrollBar* bar = scroller_->horizontalScrollBar();
    fadeLeading_->setVisible(bar->value() > bar->minimum());
    fadeTrailing_->setVisible(bar->value() < bar->maximum());
}

bool SideScroller::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Wheel)
        return QWidget::eventFilter(watched, event);
    // The scroll area would take what is left over for itself.
    if (!scrollBy(*static_cast<QWheelEvent*>(event)))
        event->ignore();
    return true;
}

bool SideScroller::scrollBy(const QWheelEvent& wheel)
{
    const QPoint way = wheel.pixelDelta().isNull() ? wheel.angleDelta() / 2 : wheel.pixelDelta();
    const bool isSideways = std::abs(way.x()) > std::abs(way.y());
    // Sideways is a direction on the screen; down is "onwards" in either script.
    const int sideways = isRightToLeft() ? -way.x() : way.x();
    QScrollBar* bar = scroller_->horizontalScrollBar();
    const int before = bar->value();
    bar->setValue(before - (isSideways ? sideways : way.y()));
    return bar->value() != before;
}

} // namespace orvane
