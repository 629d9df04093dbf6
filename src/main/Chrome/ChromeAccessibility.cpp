#include "main/Chrome/ChromeAccessibility.h"

#include "main/Chrome/Badge.h"
#include "main/Chrome/CardView.h"
#include "main/Chrome/ProgressLine.h"
#include "main/Chrome/StatusPill.h"

#include <QAccessible>
#include <QAccessibleWidget>

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

    QVariant currentValue() const override { return static_cast<ProgressLine*>(widget())->value() * 100; }

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

QAccessibleInterface* makeInterface(const QString&, QObject* object)
{
    if (auto* line = qobject_cast<ProgressLine*>(object))
        return new ProgressAccessible(line);
    if (auto* card = qobject_cast<CardView*>(object))
        return new QAccessibleWidget(card, QAccessible::Grouping);
    if (auto* pill = qobject_cast<StatusPill*>(object))
        return new QAccessibleWidget(pill, QAccessible::StaticText);
    if (auto* badge = qobject_cast<Badge*>(object))
        return new QAccessibleWidget(badge, QAccessible::StaticText);
    return nullptr;
}

} // namespace

void installChromeAccessibility()
{
    QAccessible::installFactory(makeInterface);
}

} // namespace orvane
