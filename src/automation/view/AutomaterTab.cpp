#include "automation/view/AutomaterTab.h"

#include "automation/view/ChainView.h"
#include "automation/view/Checklist.h"
#include "automation/view/RunCard.h"
#include "automation/view/StageDetails.h"
#include "automation/view/WatchCard.h"
#include "main/App/L10n.h"
#include "main/App/Preferences.h"
#include "main/App/Session.h"
#include "main/Chrome/ElidedLabel.h"
#include "main/Chrome/Hairline.h"
#include "main/Chrome/SegmentBar.h"
#include "main/Chrome/TickBox.h"
#include "main/Chrome/ToolColumn.h"
#include "mastering/view/WatermarkPanel.h"
#include "platform/async/Clock.h"
#include "platform/desktop/SleepInhibitor.h"

#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvane {

using namespace Qt::Literals::StringLiterals;
using L10n::Key;

namespace {

const QString opensFolderKey = u"automaterOpensFolder"_s;
/// The identifier of the tag's settings that a run reads.
const QString tagPanel = u"auto"_s;

QList<ChainView::Module> modulesFor(const RunChoices& choices)
{
    QList<ChainView::Module> modules;
    for (const Stage stage : stageOrder) {
        modules.append({.stage = stage,
                        .title = nameOf(stage),
                        .summary = {},
                        .state = {},
                        .isOptional = isOptional(stage),
                        .isTicked = ChainTexts::isTicked(stage, choices)});
    }
    return modules;
}

} // namespace

AutomaterTab::AutomaterTab(const AutomationServices& services, Dialogs& dialogs, QWidget* parent)
    : QWidget(parent)
    , services_(services)
    , dialogs_(dialogs)
    , automater_(services)
{
    setMinimumWidth(ToolColumn::leastWidth);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins({});
    whole->addWidget(buildColumn());
    connectSession();
    connectChain();
    connectRun();
    connectWatcher();
    restoreState();
}

AutomaterTab::~AutomaterTab()
{
    services_.session.disconnect(this);
    services_.sleep.disconnect(this);
    automater_.run().disconnect(this);
    automater_.watcher().onStateChange = nullptr;
}

QWidget* AutomaterTab::buildColumn()
{
    auto* column = new ToolColumn;
    for (QWidget* card : {buildSource(), buildChain(), buildOutput(), buildChecklist()})
        column->add(card);
    column->add(buildRun(), ToolColumn::Height::rest);
    for (QWidget* card : {buildWatcher(), buildWatermark()})
        column->add(card);
    return column;
}

QWidget* AutomaterTab::buildSource()
{
    sourcePicker_ = new SegmentBar;
    sourcePicker_->setObjectName(u"sourcePicker"_s);
    sourcePicker_->setAccessibleName(L10n::t(Key::runItOver));
    QList<SegmentBar::Item> items;
    for (const RunSource source : allRunSources)
        items.append({labelOf(source), static_cast<int>(source)});
    sourcePicker_->setItems(items);
    sourcePicker_->setSelectedTag(static_cast<int>(RunSource::download));
    sourceNote_ = makeNote({});
    sourceNote_->setObjectName(u"sourceNote"_s);
    return CardView::titled(L10n::t(Key::runItOver), {sourcePicker_, sourceNote_});
}

QWidget* AutomaterTab::buildChain()
{
    details_ = new StageDetails;
    chain_ = new ChainView(modulesFor(details_->choices()));
    return CardView::titled(L10n::t(Key::automation),
                            {chain_, details_, new Hairline, makeNote(L10n::t(Key::autoExplain))});
}

QWidget* AutomaterTab::buildOutput()
{
    outputLabel_ = new ElidedLabel;
    outputLabel_->setObjectName(u"outputLabel"_s);
    openWhenDone_ = new TickBox(L10n::t(Key::openWhenDone));
    openWhenDone_->setObjectName(u"openWhenDone"_s);
    return CardView::titled(L10n::t(Key::output), {outputLabel_, openWhenDone_});
}

QWidget* AutomaterTab::buildChecklist()
{
    checklist_ = new Checklist;
    checklist_->setObjectName(u"checklistCard"_s);
    checklist_->onFix = [this](int pane) {
        if (goToTab)
            goToTab(pane);
    };
    return checklist_;
}

QWidget* AutomaterTab::buildRun()
{
    runCard_ = new RunCard;
    runCard_->onRun = [this] { toggleRun(); };
    runCard_->onPlan = [this] { askForPlan(); };
    return runCard_;
}

QWidget* AutomaterTab::buildWatcher()
{
    watchCard_ = new WatchCard;
    return watchCard_;
}

QWidget* AutomaterTab::buildWatermark()
{
    const WatermarkPanel::Services services{
        .session = services_.session, .preferences = services_.preferences, .dialogs = dialogs_};
    watermarkPanel_ = new WatermarkPanel(tagPanel, L10n::t(Key::wmNoteAuto), services);
    return watermarkPanel_;
}

void AutomaterTab::connectSession()
{
    connect(&services_.session, &Session::tokenChanged, this, &AutomaterTab::updateRunButton);
    connect(&services_.session, &Session::selectionChanged, this, &AutomaterTab::settingsChanged);
    connect(&services_.session, &Session::destinationChanged, this, [this] {
        showDestination();
        updateRunButton();
    });
    connect(&services_.sleep, &SleepInhibitor::holdingChanged, runCard_, &RunCard::setAwake);
}

void AutomaterTab::connectChain()
{
    connect(sourcePicker_, &SegmentBar::selectionChanged, this, &AutomaterTab::sourceChanged);
    connect(openWhenDone_, &TickBox::clicked, this,
            [this](bool isOn) { services_.preferences.set(opensFolderKey, isOn); });
    chain_->onSelect = [this](int index) { details_->select(stageOrder.at(static_cast<std::size_t>(index))); };
    chain_->onToggle = [this](int index, bool isTicked) {
        details_->setTicked(stageOrder.at(static_cast<std::size_t>(index)), isTicked);
        settingsChanged();
    };
    details_->onToggle = [this](Stage stage, bool isTicked) { chain_->setTicked(stage, isTicked); };
    details_->onChange = [this] { settingsChanged(); };
}

void AutomaterTab::connectRun()
{
    AutomaterRun& run = automater_.run();
    run.choicesProvider = [this] { return choices(); };
    run.isWatched = [this] { return isActiveWindow(); };
    connect(&run, &AutomaterRun::logged, this, &AutomaterTab::log);
    connect(&run, &AutomaterRun::stageChanged, this, &AutomaterTab::showStage);
    connect(&run, &AutomaterRun::runningChanged, this, &AutomaterTab::showRunning);
    connect(&run, &AutomaterRun::finished, this, [this](const RunSummary& summary) { runCard_->finish(summary); });
    connect(&run, &AutomaterRun::progressed, this, [this](const RunProgress& progress) {
        runCard_->show(progress);
        Q_EMIT progressChanged(ChainTexts::shareOf(progress));
    });
}

void AutomaterTab::connectWatcher()
{
    automater_.watcher().onStateChange = [this] { watchCard_->updateStatus(); };
    watchCard_->statusProvider = [this] { return automater_.watchStatus(); };
    watchCard_->onChange = [this] { watchChanged(); };
}

void AutomaterTab::restoreState()
{
    openWhenDone_->setChecked(services_.preferences.flag(opensFolderKey).value_or(false));
    watchCard_->setSettings(automater_.watcher().isEnabled(), automater_.watcher().intervalMinutes());
    showDestination();
    sourceChanged();
    watchCard_->updateStatus();
}

RunSource AutomaterTab::source() const
{
    return static_cast<RunSource>(sourcePicker_->selectedTag());
}

RunChoices AutomaterTab::choices() const
{
    RunChoices chosen = details_->choices();
    chosen.source = source();
    chosen.openWhenDone = openWhenDone_->isChecked();
    return chosen;
}

ChainTexts::Facts AutomaterTab::facts()
{
    const AutomaterRun& run = automater_.run();
    ChainTexts::Facts facts{.choices = choices(), .config = {}, .target = {}};
    if (run.configProvider)
        facts.config = run.configProvider().value_or(PipelineConfig());
    const auto fromTab = run.masteringProvider ? run.masteringProvider() : std::nullopt;
    facts.target = fromTab.value_or(targetOf(facts.choices));
    facts.hasSelection = services_.session.selection().value_or(TrackRef()).isUsable();
    return facts;
}

void AutomaterTab::setPrerequisites(const QList<Prerequisite>& prerequisites)
{
    automater_.run().prerequisites = prerequisites;
    rebuildChecklist();
    updateRunButton();
}

void AutomaterTab::refresh()
{
    watchCard_->updateStatus();
    watermarkPanel_->updateChrome();
    settingsChanged();
    updateRunButton();
}

void AutomaterTab::toggleRun()
{
    automater_.run().toggle();
}

void AutomaterTab::sourceChanged()
{
    sourceNote_->setText(noteOf(source()));
    rebuildChecklist();
    settingsChanged();
    updateRunButton();
}

void AutomaterTab::settingsChanged()
{
    updateChainSummaries();
    if (runCard_->isPlanShown())
        askForPlan();
}

void AutomaterTab::rebuildChecklist()
{
    checklist_->rebuild(automater_.run().livePrerequisites());
}

void AutomaterTab::updateChainSummaries()
{
    const ChainTexts::Facts current = facts();
    for (const Stage stage : stageOrder) {
        const QString summary = ChainTexts::summaryOf(stage, current);
        chain_->setSummary(stage, summary);
        details_->setSummary(stage, summary);
    }
}

void AutomaterTab::updateRunButton()
{
    runCard_->setUnmet(checklist_->refresh());
}

void AutomaterTab::showDestination()
{
    outputLabel_->setText(QDir::toNativeSeparators(services_.session.destination().toLocalFile()));
}

void AutomaterTab::showRunning(bool running)
{
    if (running) {
        chain_->resetStates();
        details_->resetStates();
    }
    runCard_->setRunning(running);
    updateRunButton();
    Q_EMIT progressChanged(running ? std::optional(0.0) : std::nullopt);
}

void AutomaterTab::showStage(Stage stage, const StageState& state)
{
    chain_->setState(stage, state);
    details_->setState(stage, state);
    runCard_->setStage(stage, state);
    Q_EMIT progressChanged(ChainTexts::shareOf(stage, state));
}

void AutomaterTab::watchChanged()
{
    Watcher& watcher = automater_.watcher();
    watcher.setIntervalMinutes(watchCard_->interval(Watcher::usualInterval));
    if (watchCard_->isOn())
        watcher.turnOn();
    else
        watcher.turnOff();
    watchCard_->updateStatus();
}

void AutomaterTab::askForPlan()
{
    scope_.add(readPlan());
}

QCoro::Task<> AutomaterTab::readPlan()
{
    const QString plan = co_await automater_.run().plan();
    // The user may have put it away meanwhile, or started the run.
    if (runCard_->isPlanShown())
        runCard_->showPlan(plan);
}

void AutomaterTab::log(const QString& message, LogLevel level)
{
    runCard_->log(services_.clock.now().time(), message, level);
}

void AutomaterTab::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isReturn || event->modifiers() & ~Qt::KeypadModifier || event->isAutoRepeat())
        return QWidget::keyPressEvent(event);
    // A button that has the focus is what the user means; and a run of hours is not stopped by a stray key.
    if (auto* button = qobject_cast<QPushButton*>(focusWidget()))
        button->click();
    else if (!automater_.run().isRunning())
        performPrimaryAction();
}

} // namespace orvane
