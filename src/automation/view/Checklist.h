#pragma once

#include "automation/Prerequisite.h"
#include "main/Chrome/CardView.h"

#include <QList>

#include <functional>

class QVBoxLayout;

namespace orvane {

class PrereqRow;

/// What must be true before a run may start. Hidden while all of it is.
class Checklist : public CardView
{
    Q_OBJECT

public:
    explicit Checklist(QWidget* parent = nullptr);

    /// Called with the pane that a fix button leads to.
    std::function<void(int pane)> onFix;

    /// One row for each prerequisite, in order.
    void rebuild(const QList<Prerequisite>& prerequisites);

    /// Asks all of them anew. Gives how many are not met.
    int refresh();

    const QList<PrereqRow*>& rows() const { return rows_; }

private:
    QVBoxLayout* column_;
    QList<Prerequisite> prerequisites_;
    QList<PrereqRow*> rows_;
};

} // namespace orvane
