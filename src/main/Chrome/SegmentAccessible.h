#pragma once

#include "main/Chrome/SegmentBar.h"

#include <QAccessibleWidget>

#include <memory>
#include <vector>

namespace orvane {

/// A SegmentBar as screen readers see it: a group whose children are radio buttons.
class SegmentBarAccessible final : public QAccessibleWidget
{
public:
    explicit SegmentBarAccessible(SegmentBar* bar);
    ~SegmentBarAccessible() override;

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    /// The title of the selected item is the value.
    QString text(QAccessible::Text kind) const override;

private:
    SegmentBar* bar() const;

    // Registered once each, so that a reader meets the same object again.
    mutable std::vector<QAccessible::Id> children_;
};

} // namespace orvane
