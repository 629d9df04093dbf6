#pragma once

#include "automation/AutomaterRun.h"
#include "main/Chrome/CardView.h"

#include <QTime>

#include <functional>

class QBoxLayout;
class QLabel;
class QPushButton;

namespace orvane {

class AccentButton;
class Badge;
class LogView;
class ProgressCaption;
class ProgressLine;
class StepsView;

/// The button that runs everything, how far the run is, and all that it said.
class RunCard : public CardView
{
    Q_OBJECT

public:
    explicit RunCard(QWidget* parent = nullptr);

    std::function<void()> onRun;
    /// The user wants to see what a run would do.
    std::function<void()> onPlan;

    /// At a start everything about the run before goes.
    void setRunning(bool running);
    /// How many prerequisites are not met. The button is off while there are any, but always on during a run.
    void setUnmet(int unmet);
    /// The mark that the machine is kept awake.
    void setAwake(bool awake);
    void setStage(Stage stage, const StageState& state);
    void show(const RunProgress& progress);
    void finish(const RunSummary& summary);
    void log(const QTime& time, const QString& message, LogLevel level);

    bool isPlanShown() const;
    void showPlan(const QString& plan);
    void hidePlan();

    using CardView::show;

private:
    QBoxLayout* buildHead();
    QBoxLayout* buildButtons();
    QWidget* buildPlan();
    QWidget* buildLog();
    void updateButton();

    Badge* awakeMark_ = nullptr;
    Badge* stateBadge_ = nullptr;
    AccentButton* runButton_ = nullptr;
    QPushButton* planButton_ = nullptr;
    QLabel* flowLabel_ = nullptr;
    CardView* planCard_ = nullptr;
    QLabel* planLabel_ = nullptr;
    StepsView* stepsView_ = nullptr;
    ProgressLine* progress_ = nullptr;
    ProgressCaption* caption_ = nullptr;
    LogView* logView_ = nullptr;
    bool running_ = false;
    int unmet_ = 0;
};

} // namespace orvane
