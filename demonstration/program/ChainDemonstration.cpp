#include "demonstration/program/ChainDemonstration.h"

#include "automation/view/AutomaterTab.h"
#include "automation/view/ChainView.h"
#include "demonstration/program/ChainReport.h"
#include "main/Chrome/SegmentBar.h"
#include "main/Chrome/TabBar.h"
#include "main/Chrome/TabButton.h"
#include "main/Chrome/TickBox.h"
#include "main/Window/MainController.h"
#include "main/Window/ProgramServices.h"

#include <QDir>
#include <QLabel>

namespace orvane::demo {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

QString kindName(StageState::Kind kind)
{
    static const QStringList names{u"done"_s, u"failed"_s, u"skipped"_s, u"waiting"_s, u"running"_s};
    return names.at(static_cast<int>(kind));
}

} // namespace

bool ChainDemonstration::run()
{
    services().session.setDestination(QUrl::fromLocalFile(destination()));
    return signIn() && tickAllAssets() && openAutomater() && chooseSource() && chooseStages() && showPlan() &&
           runEverything() && checkOutcomes() && checkDisk() && takePicture();
}

AutomaterTab& ChainDemonstration::automater()
{
    return controller().automater();
}

QString ChainDemonstration::destination() const
{
    return folder() + u"/library"_s;
}

bool ChainDemonstration::openAutomater()
{
    print(u"\nSetting up the Automater"_s);
    int index = 0;
    while (controller().panes().at(index).view != &automater())
        ++index;
    person().click(*controller().findChild<TabBar*>()->buttons().at(index));
    return check(automater().isVisible(), u"The Automater is shown."_s);
}

bool ChainDemonstration::chooseSource()
{
    auto& picker = static_cast<SegmentBar&>(control(automater(), "sourcePicker"));
    const int wanted = static_cast<int>(RunSource::download);
    person().click(picker, picker.itemRect(wanted).center());
    return check(automater().choices().source == RunSource::download, u"It runs over the Suno library."_s);
}

bool ChainDemonstration::chooseStages()
{
    const auto* chain = automater().findChild<ChainView*>();
    QStringList wrong;
    for (ModuleCard* card : chain->cards()) {
        const Stage stage = card->module().stage;
        if (card->toggle() && !card->module().isTicked)
            person().click(*card->toggle());
        if (!card->module().isTicked)
            wrong.append(nameOf(stage));
    }
    return check(wrong.isEmpty(), u"All stages are chosen."_s);
}

bool ChainDemonstration::showPlan()
{
    person().click(control(automater(), "planButton"));
    const auto& plan = static_cast<QLabel&>(control(automater(), "plan"));
    const bool isShown = person().waitUntil([&plan] { return plan.isVisible() && !plan.text().isEmpty(); }, 30s);
    for (const QString& line : plan.text().remove(QChar(0x200b)).split(u'\n'))
        print(u"  "_s + line);
    return check(isShown && plan.text().count(u'\n') + 1 == stageCount, u"The plan tells of every stage."_s);
}

bool ChainDemonstration::runEverything()
{
    print(u"\nRunning everything"_s);
    QObject::connect(&automater().automater().run(), &AutomaterRun::finished, &automater(),
                     [this](const RunSummary& summary) { summary_ = summary; });
    const bool isStarted = person().click(control(automater(), "runButton")) && services().session.automationInProgress;
    if (!check(isStarted, u"The run started."_s))
        return false;
    const auto ended = [this] {
        printNewLines(automater());
        return !services().session.automationInProgress;
    };
    const bool hasEnded = person().waitUntil(ended, 1800s);
    printNewLines(automater());
    person().lookAt(control(automater(), "logView"));
    return check(hasEnded, u"The run ended."_s);
}

bool ChainDemonstration::checkOutcomes()
{
    print(u"\nWhat the stages came to"_s);
    const auto& outcomes = automater().automater().run().outcomes();
    QStringList wrong;
    for (const Stage stage : stageOrder) {
        const StageState state = outcomes.value(stage);
        print(u"  %1: %2, %3"_s.arg(nameOf(stage), kindName(state.kind), state.note));
        if (state.kind != StageState::Kind::done)
            wrong.append(nameOf(stage));
    }
    const bool isWhole = wrong.isEmpty() && summary_ && summary_->isSuccess();
    return check(isWhole, u"Every stage is done."_s);
}

bool ChainDemonstration::checkDisk()
{
    print(u"\nWhat lies on disk, as libebur128, TagLib and ffprobe find it"_s);
    const QString pictures = folder() + u"/frames"_s;
    QDir().mkpath(pictures);
    const ChainReport report = reportOnChain(destination(), service(), targetOf(automater().choices()), pictures);
    for (const QString& line : report.table)
        print(u"  "_s + line);
    for (const QString& fault : report.faults)
        print(u"  WRONG: "_s + fault);
    print(u"\nA picture out of each video: "_s + pictures);
    return check(
        report.faults.isEmpty(),
        u"%1 tracks are on disk, whole, named, tagged, mastered and filmed, and nothing else."_s.arg(report.tracks));
}

} // namespace orvane::demo
