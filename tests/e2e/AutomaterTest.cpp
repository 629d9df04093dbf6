#include "automation/view/AutomaterTab.h"
#include "automation/view/ChainView.h"
#include "demonstration/program/ChainReport.h"
#include "main/Chrome/LogView.h"
#include "main/Chrome/SegmentBar.h"
#include "main/Chrome/TabBar.h"
#include "main/Chrome/TabButton.h"
#include "main/Chrome/TickBox.h"
#include "main/Window/MainController.h"
#include "platform/web/WebPage.h"
#include "suno/view/SunoTab.h"
#include "tests/e2e/WorldTest.h"

#include <QAbstractButton>
#include <QDir>
#include <QLabel>
#include <QSignalSpy>

#include <gmock/gmock.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

/// Runs of the Automater in the whole program, in front of the stand-in service.
class AutomaterTest : public WorldTest
{
protected:
    void openWith(demo::LibraryOptions library)
    {
        open(std::move(library));
        world->person.click(*world->controller().findChild<TabBar*>()->buttons().at(1));
        ASSERT_TRUE(tab().isVisible());
        QObject::connect(&run(), &AutomaterRun::stageChanged, &tab(), [this](Stage stage, const StageState& state) {
            if (onStage)
                onStage(stage, state);
        });
        QObject::connect(&run(), &AutomaterRun::progressed, &tab(), [this](const RunProgress& at) {
            if (onProgress)
                onProgress(at);
        });
        QObject::connect(&run(), &AutomaterRun::finished, &tab(),
                         [this](const RunSummary& summary) { summaries.append(summary); });
    }

    void openAndSignIn(demo::LibraryOptions library)
    {
        openWith(std::move(library));
        ASSERT_TRUE(world->signIn());
    }

    static demo::LibraryOptions plainTracks(int count, int pageSize)
    {
        return {.tracks = count, .plainOnly = true, .pageSize = pageSize, .shortestSeconds = 3, .longestSeconds = 4};
    }

    AutomaterTab& tab() { return world->controller().automater(); }

    AutomaterRun& run() { return tab().automater().run(); }

    template <typename Widget>
    Widget& part(const QString& name)
    {
        auto* found = tab().findChild<Widget*>(name);
        if (!found)
            qFatal("The Automater has no part of the name %s.", qUtf8Printable(name));
        return *found;
    }

    QAbstractButton& runButton() { return part<QAbstractButton>(u"runButton"_s); }

    bool press() { return world->person.click(runButton()); }

    void choose(RunSource source)
    {
        auto& picker = part<SegmentBar>(u"sourcePicker"_s);
        world->person.click(picker, picker.itemRect(static_cast<int>(source)).center());
        ASSERT_EQ(tab().choices().source, source);
    }

    /// Starts a run by its button and waits for its end; the summary that it ended with.
    RunSummary runToTheEnd()
    {
        const auto before = summaries.size();
        EXPECT_TRUE(press());
        EXPECT_TRUE(world->waitUntil([&] { return summaries.size() > before; }));
        return summaries.isEmpty() ? RunSummary() : summaries.last();
    }

    StageState outcome(Stage stage) { return run().outcomes().value(stage); }

    QStringList files(const QString& below = {}) const
    {
        return QDir(libraryFolder() + u'/' + below).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    QStringList diskFaults()
    {
        const QString where = world->services.session.destination().toLocalFile();
        return demo::reportOnChain(where, world->service, targetOf(tab().choices()), std::nullopt).faults;
    }

    bool logHas(const QString& message)
    {
        const auto& log = part<LogView>(u"logView"_s);
        for (int line = 0; line < log.lineCount(); ++line) {
            if (log.lineText(line).endsWith(u"] "_s + message))
                return true;
        }
        return false;
    }

    std::function<void(Stage stage, const StageState& state)> onStage;
    std::function<void(const RunProgress& at)> onProgress;
    QList<RunSummary> summaries;
};

TEST_F(AutomaterTest, aRunThatIsStoppedInAnyStageIsFinishedByTheNext)
{
    openAndSignIn(plainTracks(3, 1));
    for (const Stage stage : {Stage::read, Stage::download, Stage::rename, Stage::tag, Stage::master}) {
        SCOPED_TRACE(nameOf(stage).toStdString());
        world->services.session.setDestination(QUrl::fromLocalFile(folder.path(nameOf(stage))));
        bool isPressed = false;
        const auto stopOnce = [&](bool isThere) {
            if (isThere && !isPressed)
                isPressed = press();
        };
        if (stage == Stage::read)
            onStage = [&](Stage at, const StageState& state) {
                stopOnce(at == stage && state == StageState::running());
            };
        else
            onProgress = [&](const RunProgress& at) { stopOnce(at.stage == stage && at.done == 1); };
        const RunSummary stopped = runToTheEnd();
        EXPECT_TRUE(isPressed);
        EXPECT_TRUE(stopped.wasStopped);
        EXPECT_EQ(stopped.done, indexOf(stage));
        EXPECT_EQ(stopped.failed, 1);
        EXPECT_EQ(stopped.notReached, stageCount - indexOf(stage) - 1);
        EXPECT_EQ(outcome(stage).kind, StageState::Kind::failed);
        EXPECT_EQ(runButton().text(), u"Run everything"_s);

        onStage = nullptr;
        onProgress = nullptr;
        EXPECT_TRUE(runToTheEnd().isSuccess());
        EXPECT_EQ(diskFaults().join(u'\n').toStdString(), "");
    }
}

TEST_F(AutomaterTest, aPartialLibraryGoesNoFurtherThanTheReadAndWritesNothing)
{
    openAndSignIn(plainTracks(4, 2));
    world->service.script({.where = u"page=2"_s, .times = 10, .status = 404});
    const RunSummary summary = runToTheEnd();
    EXPECT_EQ(summary.failed, 1);
    EXPECT_EQ(summary.notReached, 5);
    EXPECT_EQ(outcome(Stage::read), StageState::failed(u"only 2 tracks read before Suno stopped responding"_s));
    EXPECT_TRUE(logHas(u"Stopping here: this is a partial library, and finishing on it would produce an incomplete set "
                       "that looks complete."_s));
    EXPECT_EQ(files(), QStringList());
}

TEST_F(AutomaterTest, aTokenThatRotatesIsTakenUpOnTheWay)
{
    demo::LibraryOptions library = plainTracks(14, 1);
    library.shortestSeconds = library.longestSeconds = 1;
    openWith(library);
    world->service.setTokenLifetime(1500ms);
    ASSERT_TRUE(world->signIn());
    world->service.clearRequests();
    ASSERT_TRUE(press());
    // The pane asks every 20 seconds; here it asks all the time, so that the tokens may rotate as fast.
    ASSERT_TRUE(world->waitUntil([this] {
        world->pane().captureToken();
        return !summaries.isEmpty();
    }));
    EXPECT_EQ(outcome(Stage::read), StageState::done(u"14 tracks"_s));
    const QList<demo::SeenRequest> pages = world->feedRequests();
    ASSERT_GE(pages.size(), 15);
    EXPECT_NE(pages.first().authorization, pages.last().authorization);
    EXPECT_TRUE(summaries.last().isSuccess());
}

TEST_F(AutomaterTest, aTokenThatExpiresInTheMiddleEndsTheReadAndANewOneFinishes)
{
    openAndSignIn(plainTracks(4, 2));
    bool isExpired = false;
    QObject::connect(&run(), &AutomaterRun::logged, &tab(), [&](const QString& message) {
        if (!isExpired && message.startsWith(u"Page 1")) {
            isExpired = true;
            world->service.expireTokens();
        }
    });
    EXPECT_FALSE(runToTheEnd().isSuccess());
    EXPECT_EQ(outcome(Stage::read).kind, StageState::Kind::failed);
    EXPECT_EQ(files(), QStringList());
    ASSERT_TRUE(world->capture());
    EXPECT_TRUE(runToTheEnd().isSuccess());
    EXPECT_EQ(diskFaults().join(u'\n').toStdString(), "");
}

TEST_F(AutomaterTest, twoTracksOfOneTitleGetDifferentNames)
{
    openAndSignIn({.tracks = 6, .shortestSeconds = 3, .longestSeconds = 4});
    EXPECT_TRUE(runToTheEnd().isSuccess());
    EXPECT_TRUE(files().contains(u"Twin Lights.mp3"_s));
    EXPECT_TRUE(files().contains(u"Twin Lights (2).mp3"_s));
    EXPECT_EQ(diskFaults().join(u'\n').toStdString(), "");
}

TEST_F(AutomaterTest, aSelectionIsAllThatIsWorkedOn)
{
    openAndSignIn(plainTracks(3, 3));
    for (ModuleCard* card : tab().findChild<ChainView*>()->cards()) {
        if (card->toggle() && card->module().isTicked)
            world->person.click(*card->toggle());
    }
    EXPECT_TRUE(runToTheEnd().isSuccess());
    EXPECT_EQ(outcome(Stage::master), StageState::skipped(u"turned off"_s));
    choose(RunSource::selection);
    EXPECT_FALSE(runToTheEnd().isSuccess());
    EXPECT_EQ(outcome(Stage::download), StageState::failed(u"no track is selected in Files"_s));

    const QString chosen = files().filter(u".mp3"_s).at(1);
    const QUrl audio = QUrl::fromLocalFile(libraryFolder() + u'/' + chosen);
    world->services.session.setSelection(
        TrackRef{.name = chosen.chopped(4), .audio = audio, .artwork = {}, .lyrics = {}});
    world->person.click(*tab().findChild<ChainView*>()->cards().at(indexOf(Stage::master))->toggle());
    EXPECT_TRUE(runToTheEnd().isSuccess());
    EXPECT_EQ(outcome(Stage::download), StageState::skipped(u"1 already here"_s));
    EXPECT_EQ(files(u"Mastered"_s), QStringList{chosen.chopped(4) + u".wav"_s});
}

TEST_F(AutomaterTest, aFolderRunsWithoutAToken)
{
    openWith(plainTracks(2, 2));
    EXPECT_FALSE(runButton().isEnabled());
    QDir().mkpath(libraryFolder());
    for (const demo::Track& track : world->service.tracks())
        folder.write(u"library/007 - %1.mp3"_s.arg(track.title), world->service.audioOf(track.id));
    choose(RunSource::folder);
    world->service.clearRequests();
    ASSERT_TRUE(runButton().isEnabled());
    EXPECT_TRUE(runToTheEnd().isSuccess());
    EXPECT_EQ(world->assetRequests(), 0);
    EXPECT_EQ(world->feedRequests().size(), 0);
    QStringList expected{u"Tracklist.txt"_s};
    for (const demo::Track& track : world->service.tracks())
        expected.append(track.title + u".mp3"_s);
    expected.sort();
    EXPECT_EQ(files(), expected);
    EXPECT_EQ(files(u"Mastered"_s).size(), 2);
}

TEST_F(AutomaterTest, ofThreeNewTracksTheWatcherKeepsTwoAndFindsTheThirdAgain)
{
    openAndSignIn(plainTracks(2, 10));
    Watcher& watcher = tab().automater().watcher();
    world->person.click(part<QAbstractButton>(u"watchToggle"_s));
    ASSERT_TRUE(world->waitUntil([&] { return watcher.lastResult() == u"no new tracks"; }));
    EXPECT_EQ(files(), QStringList());

    world->service.addTracks(3);
    const QString failing = world->service.tracks().at(1).id;
    world->service.script({.where = failing + u".mp3"_s, .status = 404});
    const auto seen = [this] {
        return world->services.preferences.texts(u"watcherSeenClipIDs"_s).value_or(QStringList());
    };
    // The timer's first tick is a quarter of an hour away.
    QCoro::waitFor(watcher.check());
    EXPECT_TRUE(logHas(u"3 new track(s) found."_s));
    EXPECT_EQ(watcher.lastResult(), u"2 of 3 processed — the rest will be retried"_s);
    EXPECT_EQ(seen().size(), 4);
    EXPECT_EQ(files().filter(u".mp3"_s).size(), 2);

    QCoro::waitFor(watcher.check());
    EXPECT_TRUE(logHas(u"1 new track(s) found."_s));
    EXPECT_EQ(seen().size(), 5);
    EXPECT_EQ(files().filter(u".mp3"_s).size(), 3);
    EXPECT_EQ(files(u"Mastered"_s).size(), 3);
    EXPECT_TRUE(part<QLabel>(u"watchStatus"_s).text().contains(u"1 new track(s) processed"));
}

} // namespace
} // namespace orvane::test
