#include "tests/automation/AutomationFixture.h"

#include <QJsonArray>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using testing::IsEmpty;

class WatcherTest : public AutomationFixture
{
protected:
    WatcherTest()
        : AutomationFixture(2)
    {
        choices.rename = false;
        choices.tag = false;
        choices.master = false;
        watcher().onStateChange = [this] { states.append(watcher().summary()); };
    }

    void check() { QCoro::waitFor(watcher().check()); }

    void adopt() { QCoro::waitFor(watcher().adoptCurrentLibrary()); }

    QStringList seen() const { return preferences.texts(u"watcherSeenClipIDs"_s).value_or(QStringList()); }

    /// Puts `fresh` in the place of the chain; the identifiers that `through` gives come through.
    void handTo(std::function<QStringList(QList<Clip>)> chain)
    {
        watcher().onNewTracks = [chain](QList<Clip> clips) { return answered(chain(clips)); };
    }

    static QCoro::Task<QStringList> answered(QStringList answer) { co_return answer; }

    QStringList states;
};

TEST_F(WatcherTest, hasNotStartedAtFirst)
{
    EXPECT_EQ(watcher().summary(), u"not started yet"_s);
    EXPECT_EQ(automater->watchStatus(), u"Not watching."_s);
    EXPECT_EQ(watcher().lastCheck(), std::nullopt);
}

TEST_F(WatcherTest, aStoredIntervalOfTwoReadsAsFive)
{
    preferences.set(u"watcherIntervalMinutes"_s, 2);
    EXPECT_EQ(watcher().intervalMinutes(), 5);
}

TEST_F(WatcherTest, noStoredIntervalReadsAsFifteen)
{
    EXPECT_EQ(watcher().intervalMinutes(), 15);
}

TEST_F(WatcherTest, anIntervalOfAnotherKindReadsAsFifteen)
{
    preferences.set(u"watcherIntervalMinutes"_s, u"often"_s);
    EXPECT_EQ(watcher().intervalMinutes(), 15);
}

TEST_F(WatcherTest, anIntervalIsStoredAtLeastFive)
{
    watcher().setIntervalMinutes(1);
    EXPECT_EQ(preferences.integer(u"watcherIntervalMinutes"_s), 5);
    watcher().setIntervalMinutes(180);
    EXPECT_EQ(watcher().intervalMinutes(), 180);
}

TEST_F(WatcherTest, theFirstCheckAfterAStartRunsAtOnce)
{
    watcher().setIntervalMinutes(30);
    watcher().start();
    EXPECT_TRUE(watcher().isChecking());
    EXPECT_EQ(watcher().summary(), u"checking now…"_s);
    EXPECT_EQ(ticker.interval(), 30min);
    EXPECT_EQ(preferences.flag(u"watcherEnabled"_s), true);
    ASSERT_TRUE(waitUntil([this] { return !watcher().isChecking(); }));
    EXPECT_EQ(automater->watchStatus(), u"Watching — 2 new track(s) processed · checked just now"_s);
}

TEST_F(WatcherTest, everyTickChecksAgain)
{
    watcher().start();
    ASSERT_TRUE(waitUntil([this] { return !watcher().isChecking(); }));
    ticker.tick();
    EXPECT_TRUE(watcher().isChecking());
    ASSERT_TRUE(waitUntil([this] { return !watcher().isChecking(); }));
    EXPECT_EQ(watcher().lastResult(), u"no new tracks"_s);
}

TEST_F(WatcherTest, aStopEndsTheTicksAndIsStored)
{
    watcher().start();
    ASSERT_TRUE(waitUntil([this] { return !watcher().isChecking(); }));
    states.clear();
    watcher().stop();
    EXPECT_EQ(ticker.interval(), std::nullopt);
    EXPECT_EQ(preferences.flag(u"watcherEnabled"_s), false);
    EXPECT_EQ(states.size(), 1);
    EXPECT_EQ(automater->watchStatus(), u"Not watching."_s);
}

TEST_F(WatcherTest, theSummaryCountsTheMinutesSinceTheCheck)
{
    adopt();
    check();
    EXPECT_EQ(watcher().summary(), u"no new tracks · checked just now"_s);
    clock.pass(59s);
    EXPECT_EQ(watcher().summary(), u"no new tracks · checked just now"_s);
    clock.pass(1s);
    EXPECT_EQ(watcher().summary(), u"no new tracks · checked 1m ago"_s);
    clock.pass(2h);
    EXPECT_EQ(watcher().summary(), u"no new tracks · checked 121m ago"_s);
}

TEST_F(WatcherTest, theBaselineMarksTheWholeLibraryAsHandled)
{
    adopt();
    EXPECT_EQ(seen().size(), 2);
    EXPECT_EQ(lines,
              QStringList{u"success: 2 existing track(s) marked as already handled. From now on only new ones are "
                          "picked up."_s});
    EXPECT_EQ(watcher().lastResult(), u"2 existing track(s) marked as already handled"_s);
    EXPECT_EQ(watcher().lastCheck(), std::nullopt);
    EXPECT_EQ(states, (QStringList{u"checking now…"_s, u"2 existing track(s) marked as already handled"_s}));
}

TEST_F(WatcherTest, theBaselineAddsToWhatWasSeen)
{
    preferences.set(u"watcherSeenClipIDs"_s, QJsonArray{u"old"_s});
    adopt();
    EXPECT_EQ(seen().size(), 3);
    EXPECT_TRUE(seen().contains(u"old"_s));
}

TEST_F(WatcherTest, withoutATokenThereIsNoBaseline)
{
    session.setToken({});
    service.clearRequests();
    adopt();
    EXPECT_THAT(states, IsEmpty());
    EXPECT_THAT(lines, IsEmpty());
    EXPECT_THAT(service.requests(), IsEmpty());
}

const QString noBaseline =
    u"error: Could not read the whole library, so nothing was marked as seen. Try again in a moment."_s;

TEST_F(WatcherTest, aPartialReadIsNoBaseline)
{
    service.script(answering(404, u"page=2"_s));
    adopt();
    EXPECT_EQ(lines, QStringList{noBaseline});
    EXPECT_FALSE(preferences.contains(u"watcherSeenClipIDs"_s));
    EXPECT_FALSE(watcher().isChecking());
}

TEST_F(WatcherTest, aReadThatFailsIsNoBaseline)
{
    service.expireTokens();
    adopt();
    EXPECT_EQ(lines, QStringList{noBaseline});
    EXPECT_FALSE(preferences.contains(u"watcherSeenClipIDs"_s));
    EXPECT_FALSE(watcher().isChecking());
}

TEST_F(WatcherTest, theBaselineWaitsForACheckUnderWay)
{
    bool adopted = false;
    handTo([&](const QList<Clip>&) {
        EXPECT_FALSE(adopted);
        return QStringList();
    });
    watcher().start();
    ASSERT_TRUE(watcher().isChecking());
    adopt();
    adopted = true;
    EXPECT_EQ(lines.first(), u"success: 2 new track(s) found."_s);
    EXPECT_EQ(seen().size(), 2);
}

TEST_F(WatcherTest, turningItOnTakesTheBaselineAndThenChecks)
{
    watcher().turnOn();
    ASSERT_TRUE(waitUntil([this] { return watcher().lastCheck().has_value(); }));
    EXPECT_EQ(watcher().lastResult(), u"no new tracks"_s);
    EXPECT_EQ(ticker.interval(), 15min);
}

TEST_F(WatcherTest, turningItOnWithoutATokenWaitsForASession)
{
    session.setToken({});
    watcher().turnOn();
    EXPECT_EQ(automater->watchStatus(), u"Watching — waiting for a Suno session"_s);
    EXPECT_FALSE(preferences.contains(u"watcherSeenClipIDs"_s));
}

TEST_F(WatcherTest, turnedOffDuringTheBaselineItStaysOff)
{
    watcher().turnOn();
    watcher().turnOff();
    ASSERT_TRUE(waitUntil([this] { return !watcher().isChecking(); }));
    EXPECT_FALSE(watcher().isEnabled());
    EXPECT_EQ(ticker.interval(), std::nullopt);
}

TEST_F(WatcherTest, turningItOffAndOnAgainMarksWhatAppearedInBetween)
{
    adopt();
    service.addTracks(2);
    watcher().turnOn();
    ASSERT_TRUE(waitUntil([this] { return watcher().lastCheck().has_value(); }));
    EXPECT_EQ(watcher().lastResult(), u"no new tracks"_s);
    EXPECT_EQ(seen().size(), 4);
}

TEST_F(WatcherTest, atALaunchItGoesOnWithoutABaseline)
{
    adopt();
    preferences.set(u"watcherEnabled"_s, true);
    service.addTracks(1);
    launch();
    lines.clear();
    automater->resumeWatching();
    ASSERT_TRUE(waitUntil([this] { return watcher().lastCheck().has_value(); }));
    EXPECT_EQ(lines.first(), u"success: 1 new track(s) found."_s);
}

TEST_F(WatcherTest, atALaunchItStaysOffWhereItWasOff)
{
    automater->resumeWatching();
    EXPECT_FALSE(watcher().isChecking());
    EXPECT_EQ(ticker.interval(), std::nullopt);
}

TEST_F(WatcherTest, aTokenEmptiedBySignOutWaitsForASessionOnTheNextTick)
{
    watcher().start();
    ASSERT_TRUE(waitUntil([this] { return !watcher().isChecking(); }));
    const auto before = watcher().lastCheck();
    session.setToken({});
    clock.pass(1min);
    ticker.tick();
    EXPECT_EQ(watcher().lastResult(), u"waiting for a Suno session"_s);
    EXPECT_EQ(watcher().lastCheck(), before);
}

TEST_F(WatcherTest, duringAnExportThereIsNoCheckAndNoRecordOfOne)
{
    session.downloadInProgress = true;
    check();
    EXPECT_THAT(states, IsEmpty());
    EXPECT_EQ(watcher().lastCheck(), std::nullopt);
}

TEST_F(WatcherTest, checksDoNotOverlap)
{
    watcher().start();
    service.clearRequests();
    check();
    EXPECT_TRUE(watcher().isChecking());
    ASSERT_TRUE(waitUntil([this] { return !watcher().isChecking(); }));
    EXPECT_EQ(lines.count(u"success: 2 new track(s) found."_s), 1);
}

TEST_F(WatcherTest, aCheckThatFailsIsToldAndMarksNothing)
{
    service.expireTokens();
    check();
    const QString text = u"check failed: Suno rejected the session (HTTP 401). Open the Suno tab and sign in again."_s;
    EXPECT_EQ(lines, QStringList{u"error: "_s + text});
    EXPECT_EQ(watcher().lastResult(), text);
    EXPECT_TRUE(watcher().lastCheck().has_value());
    EXPECT_THAT(seen(), IsEmpty());
}

TEST_F(WatcherTest, aCheckOfPartOfTheLibraryMarksNothingAndProcessesNothing)
{
    int handed = 0;
    handTo([&](const QList<Clip>&) {
        ++handed;
        return QStringList();
    });
    service.script(answering(404, u"page=2"_s));
    check();
    EXPECT_EQ(lines, QStringList{u"error: Suno returned only part of the library; skipping this check"_s});
    EXPECT_EQ(watcher().lastResult(), u"Suno returned only part of the library; skipping this check"_s);
    EXPECT_EQ(handed, 0);
    EXPECT_THAT(seen(), IsEmpty());
}

TEST_F(WatcherTest, ofThreeNewTracksOneFailsTwoAreStoredAndTheNextCheckFindsOne)
{
    adopt();
    service.addTracks(3);
    const QString failing = service.tracks().at(1).id;
    service.script(answering(404, failing + u".mp3"_s, 1));
    lines.clear();
    check();
    EXPECT_TRUE(lines.contains(u"success: 3 new track(s) found."_s));
    EXPECT_TRUE(lines.contains(u"> Read the library: done, 3 new"_s));
    EXPECT_TRUE(lines.contains(u"> Download assets: done, 2 of 3 tracks, 1 problem(s)"_s));
    EXPECT_EQ(watcher().lastResult(), u"2 of 3 processed — the rest will be retried"_s);
    EXPECT_EQ(seen().size(), 4);
    EXPECT_FALSE(seen().contains(failing));

    check();
    EXPECT_TRUE(lines.contains(u"success: 1 new track(s) found."_s));
    EXPECT_EQ(watcher().lastResult(), u"1 new track(s) processed"_s);
    EXPECT_EQ(seen().size(), 5);
}

TEST_F(WatcherTest, newTracksComeInTheOrderOfTheLibrary)
{
    QStringList ids;
    handTo([&](const QList<Clip>& clips) {
        for (const Clip& clip : clips)
            ids.append(clip.id);
        return ids;
    });
    check();
    EXPECT_EQ(ids, (QStringList{service.tracks().at(0).id, service.tracks().at(1).id}));
}

TEST_F(WatcherTest, withoutAChainNothingComesThrough)
{
    watcher().onNewTracks = nullptr;
    check();
    EXPECT_EQ(watcher().lastResult(), u"0 of 2 processed — the rest will be retried"_s);
    EXPECT_FALSE(preferences.contains(u"watcherSeenClipIDs"_s));
}

TEST_F(WatcherTest, aCheckDuringARunReadsTheLibraryButProcessesNothingAndMarksNothing)
{
    bool checked = false;
    QCoro::Task<> going;
    onLine = [&](const QString& line) {
        if (line == u"> Download assets: running" && !checked) {
            checked = true;
            ticker.tick();
        }
    };
    adopt();
    service.addTracks(1);
    lines.clear();
    preferences.set(u"watcherSeenClipIDs"_s, QJsonArray{u"other"_s});
    demo::Fault slow;
    slow.kind = demo::Fault::Kind::silence;
    slow.where = u".mp3"_s;
    service.script(slow);
    ticker.start(1min, [this, &going] { going = watcher().check(); });
    run().toggle();
    ASSERT_TRUE(waitUntil([this] { return watcher().lastCheck().has_value(); }));
    EXPECT_TRUE(run().isRunning());
    EXPECT_TRUE(lines.contains(u"success: 3 new track(s) found."_s));
    EXPECT_EQ(watcher().lastResult(), u"0 of 3 processed — the rest will be retried"_s);
    EXPECT_EQ(seen(), QStringList{u"other"_s});
    run().stop();
    ASSERT_TRUE(waitUntil([this] { return !run().isRunning(); }));
}

TEST_F(WatcherTest, anExportThatBeginsDuringACheckLeavesItsTracksToTheNext)
{
    onLine = [this](const QString& line) {
        if (line == u"success: 2 new track(s) found.")
            session.downloadInProgress = true;
    };
    check();
    EXPECT_TRUE(session.downloadInProgress);
    EXPECT_EQ(watcher().lastResult(), u"0 of 2 processed — the rest will be retried"_s);
    EXPECT_THAT(seen(), IsEmpty());
    EXPECT_THAT(run().outcomes(), IsEmpty());
}

TEST_F(WatcherTest, aChainOfTheWatcherIsARunThatCanBeStopped)
{
    onProgress = [this](const RunProgress& at) {
        EXPECT_TRUE(session.automationInProgress);
        if (at.done == 1)
            run().toggle();
    };
    check();
    EXPECT_EQ(outcome(Stage::download), StageState::failed(u"stopped 1 of 2"_s));
    EXPECT_THAT(seen(), IsEmpty());
    EXPECT_FALSE(session.automationInProgress);
    EXPECT_FALSE(run().isRunning());
}

TEST_F(WatcherTest, withoutAConfigurationTheTracksStayUnseen)
{
    run().configProvider = nullptr;
    check();
    EXPECT_THAT(seen(), IsEmpty());
    EXPECT_THAT(run().outcomes(), IsEmpty());
}

TEST_F(WatcherTest, readsTheProjectOfTheDownloader)
{
    workspace = service.projectId(0);
    service.clearRequests();
    check();
    EXPECT_TRUE(service.requests().first().target.contains("project_id=" + workspace.toUtf8()));
}

TEST_F(WatcherTest, aSeenListOfAnotherKindCountsAsEmpty)
{
    preferences.set(u"watcherSeenClipIDs"_s, true);
    check();
    EXPECT_EQ(watcher().lastResult(), u"2 new track(s) processed"_s);
    EXPECT_EQ(seen().size(), 2);
}

TEST_F(WatcherTest, destroyedInTheMiddleOfACheckItEndsFirstAndStartsNothing)
{
    watcher().start();
    automater.reset();
    EXPECT_THAT(seen(), IsEmpty());
    EXPECT_FALSE(session.automationInProgress);
    EXPECT_EQ(ticker.interval(), std::nullopt);
}

} // namespace
} // namespace orvane::test
