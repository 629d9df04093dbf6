#include "main/Chrome/SegmentAccessible.h"

#include <QPointer>

namespace orvane {
namespace {

class SegmentAccessible final : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    SegmentAccessible(SegmentBar* bar, int index)
        : bar_(bar)
        , index_(index)
    {
    }

    int index() const { return index_; }

    bool isValid() const override { return bar_ && index_ < bar_->items().size(); }

    QObject* object() const override { return nullptr; }

    QAccessibleInterface* childAt(int, int) const override { return nullptr; }

    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(bar_); }

    QAccessibleInterface* child(int) const override { return nullptr; }

    int childCount() const override { return 0; }

    int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    QAccessible::Role role() const override { return QAccessible::RadioButton; }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name && isValid() ? bar_->items().at(index_).title : QString();
    }

    void setText(QAccessible::Text, const QString&) override {}

    QRect rect() const override
    {
        if (!isValid())
            return {};
        const QRect item = bar_->itemRect(index_);
        return {bar_->mapToGlobal(item.topLeft()), item.size()};
    }

    QAccessible::State state() const override
    {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        const bool isSelected = bar_->selectedIndex() == index_;
        state.checkable = true;
        state.checked = isSelected;
        state.selectable = true;
        state.selected = isSelected;
        state.focusable = true;
        state.focused = isSelected && bar_->hasFocus();
        state.disabled = !bar_->isEnabled() || !bar_->items().at(index_).isEnabled;
        state.invisible = !bar_->isVisible();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }

    QStringList actionNames() const override { return {pressAction()}; }

    void doAction(const QString& name) override
    {
        if (name == pressAction() && isValid() && bar_->isEnabled())
            bar_->choose(index_);
    }

    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QPointer<SegmentBar> bar_;
    int index_;
};

} // namespace

SegmentBarAccessible::SegmentBarAccessible(SegmentBar* bar)
    : QAccessibleWidget(bar, QAccessible::Grouping)
{
}

SegmentBarAccessible::~SegmentBarAccessible()
{
    for (const QAccessible::Id id : children_)
        QAccessible::deleteAccessibleInterface(id);
}

SegmentBar* SegmentBarAccessible::bar() const
{
    return static_cast<SegmentBar*>(widget());
}

int SegmentBarAccessible::childCount() const
{
    return int(bar()->items().size());
}

QAccessibleInterface* SegmentBarAccessible::child(int index) const
{
    if (index < 0 || index >= childCount())
        return nullptr;
    while (int(children_.size()) <= index) {
        auto* segment = new SegmentAccessible(bar(), int(children_.size()));
        children_.push_back(QAccessible::registerAccessibleInterface(segment));
    }
    return QAccessible::accessibleInterface(children_[size_t(index)]);
}

int SegmentBarAccessible::indexOfChild(const QAccessibleInterface* child) const
{
    const auto* segment = dynamic_cast<const SegmentAccessible*>(child);
    return segment ? segment->index() : -1;
}

QAccessibleInterface* SegmentBarAccessible::childAt(int x, int y) const
{
    return child(bar()->indexAt(bar()->mapFromGlobal(QPoint(x, y))));
}

QAccessibleInterface* SegmentBarAccessible::focusChild() const
{
    return bar()->hasFocus() ? child(bar()->selectedIndex()) : nullptr;
}

QString SegmentBarAccessible::text(QAccessible::Text kind) const
{
    const int selected = bar()->selectedIndex();
    if (kind == QAccessible::Value)
        return selected < 0 ? QString() : bar()->items().at(selected).title;
    return QAccessibleWidget::text(kind);
}

} // namespace orvane
