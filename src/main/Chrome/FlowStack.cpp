#include "main/Chrome/FlowStack.h"

#include "main/Chrome/Theme.h"

#include <QEvent>
#include <QLayoutItem>
#include <QStyle>

#include <algorithm>

namespace orvane {
namespace {

QSize wantedBy(QWidget* view)
{
    return QWidgetItem(view).sizeHint();
}

QList<QWidget*> shownOf(const QList<QWidget*>& views)
{
    QList<QWidget*> shown;
    std::copy_if(views.begin(), views.end(), std::back_inserter(shown),
                 [](QWidget* view) { return !view->isHidden(); });
    return shown;
}

QList<QSize> sizesOf(const QList<QWidget*>& views)
{
    QList<QSize> sizes;
    std::transform(views.begin(), views.end(), std::back_inserter(sizes), wantedBy);
    return sizes;
}

} // namespace

FlowStack::FlowStack(QWidget* parent)
    : QWidget(parent)
    , rows_{.columnSpacing = Theme::Space::small, .rowSpacing = Theme::Space::small}
{
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

FlowStack::~FlowStack()
{
    // The views die after this object's fields, and must not be reported to it.
    for (QWidget* view : views_ + trailing_)
        view->disconnect(this);
}

void FlowStack::setViews(const QList<QWidget*>& views, const QList<QWidget*>& trailing)
{
    const QList<QWidget*> before = views_ + trailing_;
    views_ = views;
    trailing_ = trailing;
    for (QWidget* view : before) {
        if (!views_.contains(view) && !trailing_.contains(view))
            letGoOf(view);
    }
    takeIn(views_ + trailing_);
    rowsChanged();
}

void FlowStack::takeIn(const QList<QWidget*>& views)
{
    for (QWidget* view : views) {
        const bool wasHidden = view->testAttribute(Qt::WA_WState_ExplicitShowHide) && view->isHidden();
        if (view->parentWidget() != this)
            view->setParent(this);
        view->setVisible(!wasHidden);
        view->raise();
        connect(view, &QObject::destroyed, this, &FlowStack::forget, Qt::UniqueConnection);
    }
    for (qsizetype index = 1; index < views.size(); ++index)
        setTabOrder(views.at(index - 1), views.at(index));
}

void FlowStack::letGoOf(QWidget* view)
{
    view->disconnect(this);
    view->setParent(nullptr);
}

void FlowStack::forget(QObject* view)
{
    views_.removeIf([view](QWidget* mine) { return mine == view; });
    trailing_.removeIf([view](QWidget* mine) { return mine == view; });
    rowsChanged();
}

void FlowStack::setColumnSpacing(int spacing)
{
    rows_.columnSpacing = spacing;
    rowsChanged();
}

void FlowStack::setRowSpacing(int spacing)
{
    rows_.rowSpacing = spacing;
    rowsChanged();
}

void FlowStack::setCentresRows(bool centres)
{
    rows_.centresRows = centres;
    rowsChanged();
}

FlowRows::Placement FlowStack::placement(int width) const
{
    return rows_.place(sizesOf(shownOf(views_)), sizesOf(shownOf(trailing_)), width);
}

int FlowStack::heightForWidth(int width) const
{
    return placement(width).height;
}

QSize FlowStack::sizeHint() const
{
    int width = 0;
    for (const QSize& size : sizesOf(shownOf(views_ + trailing_)))
        width += (width > 0 ? columnSpacing() : 0) + size.width();
    return {width, laidOutHeight_};
}

QSize FlowStack::minimumSizeHint() const
{
    int widest = 0;
    for (QWidget* view : shownOf(views_ + trailing_))
        widest = std::max(widest, QWidgetItem(view).minimumSize().width());
    return {widest, laidOutHeight_};
}

bool FlowStack::event(QEvent* event)
{
    const bool isHandled = QWidget::event(event);
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::LayoutDirectionChange)
        rowsChanged();
    return isHandled;
}

void FlowStack::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    layOut();
}

void FlowStack::rowsChanged()
{
    layOut();
    updateGeometry();
}

void FlowStack::layOut()
{
    const FlowRows::Placement placed = placement(width());
    const QList<QWidget*> shown = shownOf(views_) + shownOf(trailing_);
    for (qsizetype index = 0; index < shown.size(); ++index)
        shown.at(index)->setGeometry(QStyle::visualRect(layoutDirection(), rect(), placed.rects.at(index)));
    if (placed.height == laidOutHeight_)
        return;
    laidOutHeight_ = placed.height;
    updateGeometry();
}

} // namespace orvane
