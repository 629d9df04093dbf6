#pragma once

#include "automation/Automater.h"
#include "automation/view/ChainTexts.h"
#include "main/Chrome/PrimaryAction.h"
#include "platform/async/TaskScope.h"

#include <QWidget>

#include <functional>
#include <optional>

class QLabel;

namespace orvane {

class ChainView;
class Checklist;
class Dialogs;
class ElidedLabel;
class RunCard;
class SegmentBar;
class StageDetails;
class TickBox;
class WatchCard;
class WatermarkPanel;

/// The tool that does every job of the chain in one run: what it works on, the chain with the settings of each stage,
/// what must be true first, the run, the watcher and the user's own tag. All that a run does is in `Automater`.
class AutomaterTab : public QWidget, public PrimaryAction
{
    Q_OBJECT

public:
    /// The services and the dialogs outlive the tab.
    AutomaterTab(const AutomationServices& services, Dialogs& dialogs, QWidget* parent = nullptr);
    ~AutomaterTab() override;

    /// Leads to the pane of that index.
    std::function<void(int pane)> goToTab;

    /// What the run asks other tools for is set on it.
    Automater& automater() { return automater_; }

    void setPrerequisites(const QList<Prerequisite>& prerequisites);

    /// For each time the tab is shown: other tools may have changed what a run depends on.
    void refresh();
    /// Starts a run, or stops the one that goes.
    void toggleRun();

    void performPrimaryAction() override { toggleRun(); }

    RunChoices choices() const;

Q_SIGNALS:
    /// How far the whole run is, from 0 to 1; absent when none goes.
    void progressChanged(std::optional<double> share);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* buildColumn();
    QWidget* buildSource();
    QWidget* buildChain();
    QWidget* buildOutput();
    QWidget* buildChecklist();
    QWidget* buildRun();
    QWidget* buildWatcher();
    QWidget* buildWatermark();
    void connectSession();
    void connectRun();
    void connectChain();
    void connectWatcher();
    void restoreState();

    RunSource source() const;
    ChainTexts::Facts facts();
    void sourceChanged();
    void settingsChanged();
    void watchChanged();
    void rebuildChecklist();
    void updateChainSummaries();
    void updateRunButton();
    void showDestination();
    void showRunning(bool running);
    void showStage(Stage stage, const StageState& state);
    void askForPlan();
    QCoro::Task<> readPlan();
    void log(const QString& message, LogLevel level);

    const AutomationServices services_;
    Dialogs& dialogs_;
    SegmentBar* sourcePicker_ = nullptr;
    QLabel* sourceNote_ = nullptr;
    ChainView* chain_ = nullptr;
    StageDetails* details_ = nullptr;
    ElidedLabel* outputLabel_ = nullptr;
    TickBox* openWhenDone_ = nullptr;
    Checklist* checklist_ = nullptr;
    RunCard* runCard_ = nullptr;
    WatchCard* watchCard_ = nullptr;
    WatermarkPanel* watermarkPanel_ = nullptr;
    Automater automater_;
    TaskScope scope_;
};

} // namespace orvane
