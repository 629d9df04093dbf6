#include "main/Chrome/ChromeAccessibility.h"

#include "main/Chrome/Badge.h"
#include "main/Chrome/CardView.h"
#include "main/Chrome/MenuChip.h"
#include "main/Chrome/ProgressLine.h"
#include "main/Chrome/SegmentAccessible.h"
#include "main/Chrome/StatusPill.h"
#include "main/Chrome/TabBar.h"
#include "main/Chrome/TabButton.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include <cmath>

namespace orvane {
namespace {

class ProgressAccessible final : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit ProgressAccessible(ProgressLine* line)
        : QAccessibleWidget(line, QAccessible::ProgressBar)
    {
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.readOnly = true;
        return state;
    }

    QVariant currentValue() const override
    {
        return int(std::lround(static_cast<ProgressLine*>(widget())->value() * 100));
    }

    void setCurrentValue(const QVariant&) override {}

    QVariant minimumValue() const override { return 0; }

    QVariant maximumValue() const override { return 100; }

    QVariant minimumStepSize() const override { return 1; }

    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Value)
            return QStringLiteral("%1 %").arg(currentValue().toInt());
        return QAccessibleWidget::text(kind);
    }
};

/// A painted button: pressed by a screen reader as by a click.
class ButtonAccessible : public QAccessibleWidget
{
public:
    ButtonAccessible(QAbstractButton* button, QAccessible::Role role)
        : QAccessibleWidget(button, role)
    {
    }

    QString text(QAccessible::Text kind) const override
    {
        const QString given = QAccessibleWidget::text(kind);
        return kind == QAccessible::Name && given.isEmpty() ? button()->text() : given;
    }

    QStringList actionNames() const override
    {
        return button()->isEnabled() ? QStringList{pressAction()} + QAccessibleWidget::actionNames() : QStringList();
    }

    void doAction(const QString& name) override
    {
        if (name == pressAction())
            button()->click();
        else
            QAccessibleWidget::doAction(name);
    }

protected:
    QAbstractButton* button() const { return static_cast<QAbstractButton*>(widget()); }
};

class TabAccessible final : public ButtonAccessible
{
public:
    explicit TabAccessible(TabButton* tab)
        : ButtonAccessible(tab, QAccessible::PageTab)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = ButtonAccessible::state();
        state.selectable = true;
        state.selected = static_cast<TabButton*>(button())->isActive();
        return state;
    }
};

class ChipAccessible final : public ButtonAccessible
{
public:
    explicit ChipAccessible(ToggleChip* chip)
        : ButtonAccessible(chip, qobject_cast<MenuChip*>(chip) ? QAccessible::ButtonMenu : QAccessible::Button)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = ButtonAccessible::state();
        const auto* chip = static_cast<ToggleChip*>(button());
        state.checkable = true;
        state.checked = chip->isLit();
        state.hasPopup = role() == QAccessible::ButtonMenu;
        state.expanded = chip->isOpen();
        return state;
    }
};

QAccessible::Role roleOf(QObject* object)
{
    if (qobject_cast<TabBar*>(object))
        return QAccessible::PageTabList;
    if (qobject_cast<CardView*>(object))
        return QAccessible::Grouping;
    if (qobject_cast<StatusPill*>(object) || qobject_cast<Badge*>(object))
        return QAccessible::StaticText;
    return QAccessible::NoRole;
}

QAccessibleInterface* makeInterface(const QString&, QObject* object)
{
    if (auto* line = qobject_cast<ProgressLine*>(object))
        return new ProgressAccessible(line);
    if (auto* bar = qobject_cast<SegmentBar*>(object))
        return new SegmentBarAccessible(bar);
    if (auto* tab = qobject_cast<TabButton*>(object))
        return new TabAccessible(tab);
    if (auto* chip = qobject_cast<ToggleChip*>(object))
        return new ChipAccessible(chip);
    const QAccessible::Role role = roleOf(object);
    return role == QAccessible::NoRole ? nullptr : new QAccessibleWidget(static_cast<QWidget*>(object), role);
}

} // namespace

void installChromeAccessibility()
{
    QAccessible::installFactory(makeInterface);
}

} // namespace orvane
