#include "main/Chrome/TabBar.h"

#include "main/Chrome/CardView.h"
#include "main/Chrome/RowKeys.h"
#include "main/Chrome/SideScroller.h"
#include "main/Chrome/TabButton.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QScrollArea>

#include <algorithm>

namespace orvane {
namespace {

constexpr int inset = 5;
constexpr int leastWidth = 120;

} // namespace

TabBar::TabBar(const QStringList& titles, QWidget* parent)
    : QWidget(parent)
    , card_(new CardView(this))
    , track_(new QWidget)
    , row_(new SideScroller(track_, Theme::card, this))
    , keys_(std::make_unique<RowKeys>(
          *this, [this] { return RowKeys::Place{.current = selected_, .count = int(buttons_.size())}; },
          [this](int index) { goTo(index); }))
{
    setAccessibleName(QStringLiteral("Tools"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    buildTrack(titles);
}

TabBar::~TabBar() = default;

void TabBar::buildTrack(const QStringList& titles)
{
    auto* stack = new QHBoxLayout(track_);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->setSpacing(2);
    for (const QString& title : titles) {
        auto* button = new TabButton(title, track_);
        const int index = int(buttons_.size());
        connect(button, &QAbstractButton::clicked, this, [this, index] { choose(index); });
        keys_->watch(*button);
        button->setActive(index == selected_);
        buttons_.append(button);
        stack->addWidget(button);
    }
    stack->addStretch();
}

QWidget* TabBar::fadeLeading() const
{
    return row_->fadeLeading();
}

QWidget* TabBar::fadeTrailing() const
{
    return row_->fadeTrailing();
}

QScrollArea* TabBar::scroller() const
{
    return row_->scroller();
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
    row_->scrollIntoView(buttons_.at(index));
}

void TabBar::choose(int index)
{
    select(index);
    if (onSelect)
        onSelect(index);
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
    row_->setGeometry(rect().adjusted(inset, inset, -inset, -inset));
    if (!buttons_.isEmpty())
        row_->scrollIntoView(buttons_.at(selected_));
}

void TabBar::goTo(int index)
{
    if (index != selected_)
        choose(index);
    buttons_.at(index)->setFocus(Qt::TabFocusReason);
}

} // namespace orvane
