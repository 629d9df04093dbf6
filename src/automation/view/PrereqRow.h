#pragma once

#include "automation/Prerequisite.h"

#include <QWidget>

#include <functional>

class QLabel;
class QPushButton;

namespace orvane {

class ElidedLabel;
class LightView;

/// One thing that must be true before a run may start, whether it is, and the way to its remedy.
class PrereqRow : public QWidget
{
    Q_OBJECT

public:
    explicit PrereqRow(QWidget* parent = nullptr);

    /// Called with the pane that the fix button leads to.
    std::function<void(int pane)> onFix;

    /// Asks the prerequisite anew and shows it. Gives whether it is met.
    bool update(const Prerequisite& prerequisite);
    using QWidget::update;

private:
    LightView* mark_;
    QLabel* title_;
    ElidedLabel* detail_;
    QPushButton* fixButton_;
    int pane_ = 0;
};

} // namespace orvane
