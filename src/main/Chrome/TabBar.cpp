#include "main/Chrome/TabBar.h"

#include "main/Chrome/CardView.h"
#include "main/Chrome/Paint.h"
#include "main/Chrome/TabButton.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLinearGradient>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QWheelEvent>

#include <algorithm>
#include <cstdlib>

namespace orvane {
namespace {

constexpr int inset = 5;
constexpr int fadeWidth = 32;
constexpr int markWidth = 8;
constexpr int leastWidth = 120;

/// Lets the tabs run out into the card's colour at one end.
class Fade final : public QWidget
{
public:
    Fade(bool isLeading, QWidget* parent)
        : QWidget(parent)
        , isLeading_(isLeading)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        hide();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        const bool solidAtLeft = isLeading_ != isRightToLeft();
        QLinearGradient gradient(solidAtLeft ? 0 : width(), 0, solidAtLeft ? width() : 0, 0);
        QColor clear = Theme::card;
        clear.setAlpha(0);
        gradient.setColorAt(0, Theme::card);
        gradient.setColorAt(0.35, Theme::card);
        gradient.setColorAt(1, clear);
        QPainter painter(this);
        painter.fillRect(rect(), gradient);
        const QRectF mark(solidAtLeft ? 0 : width() - markWidth, 0, markWidth, height());
        Paint::chevronSideways(painter, mark, solidAtLeft, Theme::textSecond);
    }

private:
    bool isLeading_;
};

void makeClear(QWidget* widget)
{
    widget->setAutoFillBackground(false);
}

} // namespace

TabBar::TabBar(const QStringList& titles, QWidget* parent)
    : QWidget(parent)
    , card_(new CardView(this))
    , scroller_(new QScrollArea(this))
    , track_(new QWidget)
{
    setAccessibleName(QStringLiteral("Tools"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    buildTrack(titles);
    buildFades();
}

void TabBar::buildTrack(const QStringList& titles)
{
    auto* stack = new QHBoxLayout(track_);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->setSpacing(2);
    for (const QString& title : titles) {
        auto* button = new TabButton(title, track_);
        const int index = int(buttons_.size());
        connect(button, &QAbstractButton::clicked, this, [this, index] { choose(index); });
        button->installEventFilter(this);
        button->setActive(index == selected_);
        buttons_.append(button);
        stack->addWidget(button);
    }
    stack->addStretch();

    scroller_->setFrameShape(QFrame::NoFrame);
    scroller_->setFocusPolicy(Qt::NoFocus);
    scroller_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroller_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroller_->setWidgetResizable(true);
    scroller_->setWidget(track_);
    scroller_->viewport()->installEventFilter(this);
    makeClear(scroller_->viewport());
    makeClear(track_);
}

void TabBar::buildFades()
{
    fadeLeading_ = new Fade(true, this);
    fadeTrailing_ = new Fade(false, this);
    QScrollBar* bar = scroller_->horizontalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, &TabBar::updateFades);
    connect(bar, &QScrollBar::rangeChanged, this, &TabBar::updateFades);
}

void TabBar::select(int index)
{
    if (index < 0 || index >= buttons_.size())
        return;
    selected_ = index;
    for (qsizetype each = 0; each < buttons_.size(); ++each)
        buttons_.at(each)->setActive(each == index);
    QAccessibleEvent event(buttons_.at(index), QAccessible::Selection);
    QAccessible::updateAccessibility(&event);
    scrollIntoView(index);
    updateFades();
}

void TabBar::choose(int index)
{
    select(index);
    if (onSelect)
        onSelect(index);
}

void TabBar::scrollIntoView(int index)
{
    // The scroll area's own way to show a widget reckons from the left in either script.
    const QRect button = buttons_.at(index)->geometry();
    const int start = isRightToLeft() ? track_->width() - button.right() - 1 : button.left();
    QScrollBar* bar = scroller_->horizontalScrollBar();
    const int last = start + button.width() + fadeWidth - scroller_->viewport()->width();
    bar->setValue(std::min(std::max(bar->value(), last), std::max(0, start - fadeWidth)));
}

QSize TabBar::sizeHint() const
{
    return track_->sizeHint().grownBy({inset, inset, inset, inset});
}

QSize TabBar::minimumSizeHint() const
{
    return {std::min(leastWidth, sizeHint().width()), sizeHint().height()};
}

void TabBar::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    placeParts();
}

void TabBar::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        placeParts();
}

void TabBar::placeParts()
{
    card_->setGeometry(rect());
    const QRect room = rect().adjusted(inset, inset, -inset, -inset);
    scroller_->setGeometry(room);
    const QRect leading(room.left(), room.top(), fadeWidth, room.height());
    fadeLeading_->setGeometry(QStyle::visualRect(layoutDirection(), room, leading));
    const QRect trailing(room.right() + 1 - fadeWidth, room.top(), fadeWidth, room.height());
    fadeTrailing_->setGeometry(QStyle::visualRect(layoutDirection(), room, trailing));
    if (!buttons_.isEmpty())
        scrollIntoView(selected_);
    updateFades();
}

void TabBar::updateFades()
{
    const QScrollBar* bar = scroller_->horizontalScrollBar();
    fadeLeading_->setVisible(bar->value() > bar->minimum());
    fadeTrailing_->setVisible(bar->value() < bar->maximum());
}

bool TabBar::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Wheel) {
        scrollBy(*static_cast<QWheelEvent*>(event));
        return true;
    }
    // The scroll area between would take the arrow keys for itself.
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (indexFor(key->key()) >= 0) {
            keyPressEvent(key);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void TabBar::scrollBy(const QWheelEvent& wheel)
{
    const QPoint way = wheel.pixelDelta().isNull() ? wheel.angleDelta() / 2 : wheel.pixelDelta();
    const bool isSideways = std::abs(way.x()) > std::abs(way.y());
    // Sideways is a direction on the screen; down is "onwards" in either script.
    const int sideways = isRightToLeft() ? -way.x() : way.x();
    QScrollBar* bar = scroller_->horizontalScrollBar();
    bar->setValue(bar->value() - (isSideways ? sideways : way.y()));
}

int TabBar::indexFor(int key) const
{
    const int last = int(buttons_.size()) - 1;
    const int forward = isRightToLeft() ? Qt::Key_Left : Qt::Key_Right;
    const int backward = isRightToLeft() ? Qt::Key_Right : Qt::Key_Left;
    if (key == forward)
        return std::min(last, selected_ + 1);
    if (key == backward)
        return std::max(0, selected_ - 1);
    if (key == Qt::Key_Home)
        return 0;
    return key == Qt::Key_End ? last : -1;
}

void TabBar::keyPressEvent(QKeyEvent* event)
{
    const int index = indexFor(event->key());
    if (index < 0 || buttons_.isEmpty())
        return QWidget::keyPressEvent(event);
    if (index != selected_)
        choose(index);
    buttons_.at(index)->setFocus(Qt::TabFocusReason);
}

} // namespace orvane
