#include "automation/view/RunCard.h"

#include "automation/view/ChainTexts.h"
#include "automation/view/StageLook.h"
#include "automation/view/StepsView.h"
#include "main/App/L10n.h"
#include "main/Chrome/AccentButton.h"
#include "main/Chrome/Badge.h"
#include "main/Chrome/LogView.h"
#include "main/Chrome/ProgressCaption.h"
#include "main/Chrome/ProgressLine.h"
#include "suno/TimeLeft.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace orvane {

using namespace Qt::Literals::StringLiterals;
using L10n::Key;

namespace {

constexpr int leastLogHeight = 140;
constexpr int planInset = 10;

} // namespace

RunCard::RunCard(QWidget* parent)
    : CardView(parent)
{
    setAccessibleName(L10n::t(Key::run));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Theme::Space::large, Theme::Space::medium, Theme::Space::large, Theme::Space::large);
    column->setSpacing(Theme::Space::small);
    column->addLayout(buildHead());
    column->addLayout(buildButtons());
    flowLabel_ = makeNote({}, this);
    flowLabel_->setObjectName(u"flowLabel"_s);
    column->addWidget(flowLabel_);
    column->addWidget(buildPlan());
    column->addSpacing(Theme::Space::tight);
    stepsView_ = new StepsView(this);
    column->addWidget(stepsView_);
    progress_ = new ProgressLine(this);
    progress_->setObjectName(u"progress"_s);
    progress_->setAccessibleName(L10n::t(Key::progress));
    column->addWidget(progress_);
    caption_ = new ProgressCaption(this);
    column->addWidget(caption_);
    column->addWidget(buildLog(), 1);
    setRunning(false);
}

QBoxLayout* RunCard::buildHead()
{
    awakeMark_ = new Badge(this);
    awakeMark_->setObjectName(u"awakeMark"_s);
    awakeMark_->setBadge(u"AWAKE"_s, Theme::textMuted);
    awakeMark_->setToolTip(u"This computer stays awake until the run has ended."_s);
    awakeMark_->hide();
    stateBadge_ = new Badge(this);
    stateBadge_->setObjectName(u"stateBadge"_s);

    auto* row = new QHBoxLayout;
    row->addWidget(makeHeading(L10n::t(Key::run), this), 1);
    row->addWidget(awakeMark_);
    row->addWidget(stateBadge_);
    return row;
}

QBoxLayout* RunCard::buildButtons()
{
    runButton_ = new AccentButton({}, this);
    runButton_->setObjectName(u"runButton"_s);
    connect(runButton_, &QPushButton::clicked, this, [this] {
        if (onRun)
            onRun();
    });
    planButton_ = new QPushButton(u"Preview"_s, this);
    planButton_->setObjectName(u"planButton"_s);
    planButton_->setToolTip(u"What each stage will do to how many tracks"_s);
    planButton_->setCheckable(true);
    connect(planButton_, &QPushButton::clicked, this, [this](bool isWanted) {
        if (!isWanted)
            hidePlan();
        else if (onPlan)
            onPlan();
    });

    auto* row = new QHBoxLayout;
    row->setSpacing(Theme::Space::small);
    row->addWidget(runButton_, 1);
    row->addWidget(planButton_);
    return row;
}

QWidget* RunCard::buildPlan()
{
    planLabel_ = makeNote({});
    planLabel_->setObjectName(u"plan"_s);
    planLabel_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    planCard_ = CardView::plain(planLabel_, planInset, this);
    planCard_->setFill(Theme::field);
    planCard_->setRadius(Theme::Radius::control);
    planCard_->hide();
    return planCard_;
}

QWidget* RunCard::buildLog()
{
    logView_ = new LogView(this);
    logView_->setObjectName(u"logView"_s);
    logView_->setAccessibleName(L10n::t(Key::progress));
    logView_->setMinimumHeight(leastLogHeight);
    return logView_;
}

void RunCard::setRunning(bool running)
{
    running_ = running;
    caption_->clearTimeLeft();
    if (running) {
        stepsView_->reset();
        progress_->setValue(0);
        caption_->clear();
        hidePlan();
    }
    stateBadge_->setBadge(L10n::t(running ? Key::running : Key::idle), running ? Theme::accent : Theme::textMuted);
    updateButton();
}

void RunCard::setUnmet(int unmet)
{
    unmet_ = unmet;
    updateButton();
}

void RunCard::updateButton()
{
    runButton_->setText(L10n::t(running_ ? Key::stop : Key::runEverything));
    runButton_->setDanger(running_);
    runButton_->setEnabled(running_ || unmet_ == 0);
    planButton_->setEnabled(!running_);
    flowLabel_->setText(running_ ? QString() : ChainTexts::setupText(unmet_));
    flowLabel_->setVisible(!flowLabel_->text().isEmpty());
}

void RunCard::setAwake(bool awake)
{
    awakeMark_->setVisible(awake);
}

void RunCard::setStage(Stage stage, const StageState& state)
{
    stepsView_->light(indexOf(stage), state.kind);
    stepsView_->setProgress(stepsProgress(stage, state));
    stepsView_->say(captionOf(stage, state));
    if (state.kind != StageState::Kind::running)
        return;
    progress_->setValue(0);
    caption_->clear();
}

void RunCard::show(const RunProgress& progress)
{
    progress_->setValue(progress.fraction());
    if (progress.label.isEmpty())
        return;
    caption_->tell(progress.label, progress.timeLeft ? timeLeftText(*progress.timeLeft) : QString());
}

void RunCard::finish(const RunSummary& summary)
{
    progress_->setValue(summary.bar());
    stepsView_->setProgress(summary.steps());
    caption_->tell(summary.text());
}

void RunCard::log(const QTime& time, const QString& message, LogLevel level)
{
    logView_->append({.time = time, .message = message, .colour = StageLook::colourOf(level)});
}

bool RunCard::isPlanShown() const
{
    return planButton_->isChecked();
}

void RunCard::showPlan(const QString& plan)
{
    planLabel_->setText(breakable(plan));
    planCard_->setVisible(!plan.isEmpty());
    planButton_->setChecked(!plan.isEmpty());
}

void RunCard::hidePlan()
{
    showPlan({});
}

} // namespace orvane
