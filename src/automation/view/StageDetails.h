#pragma once

#include "automation/RunChoices.h"
#include "automation/Stage.h"

#include <QMap>
#include <QWidget>

#include <functional>

class QLabel;
class QVBoxLayout;

namespace orvane {

class PopUpButton;
class SegmentBar;
class StageRow;
class TickBox;

/// The panel of the selected stage: what it has come to, whether it is ticked, and its settings.
class StageDetails : public QWidget
{
    Q_OBJECT

public:
    explicit StageDetails(QWidget* parent = nullptr);

    /// Called after every change that the user makes.
    std::function<void()> onChange;
    /// Called before it where that was a tick.
    std::function<void(Stage stage, bool isTicked)> onToggle;

    /// Shows the panel of the stage in place of the one before.
    void select(Stage stage);

    void setState(Stage stage, const StageState& state);
    void resetStates();
    /// For the stages that have nothing to set.
    void setSummary(Stage stage, const QString& summary);
    void setTicked(Stage stage, bool isTicked);

    /// The settings of the stages; the rest is as it comes.
    RunChoices choices() const;

private:
    void addView(Stage stage, const QList<QWidget*>& content);
    QWidget* makeToggle(Stage stage, const QString& title);
    void buildSummaries();
    void buildRename();
    void buildTags();
    void buildMaster();
    void buildVideo();
    PopUpButton* makePicker(const QString& name, const QString& title, const QStringList& rows);
    void masteringChanged();
    void rendererChanged();
    void changed();

    QVBoxLayout* column_;
    StageRow* row_;
    QMap<Stage, QWidget*> views_;
    QMap<Stage, StageState> states_;
    QMap<Stage, QLabel*> summaries_;
    QMap<Stage, TickBox*> toggles_;
    PopUpButton* patternPicker_ = nullptr;
    PopUpButton* platformPicker_ = nullptr;
    PopUpButton* formatPicker_ = nullptr;
    QLabel* platformNote_ = nullptr;
    SegmentBar* rendererPicker_ = nullptr;
    QLabel* videoNote_ = nullptr;
    Stage selected_ = Stage::read;
};

} // namespace orvane
