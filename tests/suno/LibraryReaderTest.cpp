#include "tests/suno/EngineTest.h"

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

using LibraryReader = EngineTest;

TEST_F(LibraryReader, aFirstPageWithAnEmptyClipsListIsAnEmptyLibrary)
{
    server.play(feedPage({}));
    EXPECT_EQ(fetch(), QStringList());
    EXPECT_TRUE(engine.lastFetchComplete());
    EXPECT_THAT(log, ElementsAre(info(u"Querying page 1…"_s)));
}

TEST_F(LibraryReader, pagesAreReadUntilOneHasNoRecords)
{
    server.play(feedPage({u"a"_s, u"b"_s}));
    server.play(feedPage({u"c"_s}));
    server.play(feedPage({}));
    EXPECT_EQ(fetch(), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
    EXPECT_TRUE(engine.lastFetchComplete());
    EXPECT_THAT(log, ElementsAre(info(u"Querying page 1…"_s), info(u"Page 1: 2 tracks (total 2)"_s),
                                 info(u"Querying page 2…"_s), info(u"Page 2: 1 tracks (total 3)"_s),
                                 info(u"Querying page 3…"_s)));
}

TEST_F(LibraryReader, thePagesNumberAndTheProjectStandInTheAddress)
{
    server.play(feedPage({u"a"_s}));
    server.play(feedPage({}));
    fetch();
    server.clear();
    server.play(feedPage({}));
    fetch(u"id & more"_s);
    QList<QByteArray> targets;
    for (const QByteArray& head : server.requests())
        targets.append(targetOf(head));
    EXPECT_THAT(targets, ElementsAre("/api/feed/v2?page=1", "/api/feed/v2?page=2",
                                     "/api/feed/v2?page=1&project_id=id%20%26%20more"));
}

TEST_F(LibraryReader, aPageOfRecordsNoneOfWhichHasAnIdGoesOnToTheNext)
{
    server.play(json(R"({"clips": [{"title": "x"}, {"id": 4}]})"));
    server.play(feedPage({u"a"_s}));
    server.play(feedPage({}));
    EXPECT_EQ(fetch(), QStringList{u"a"_s});
    EXPECT_TRUE(engine.lastFetchComplete());
    EXPECT_EQ(log.at(1), info(u"Page 1: 2 tracks (total 0)"_s));
}

TEST_F(LibraryReader, aPageThatHoldsOnlyKnownClipsAddsNothing)
{
    server.play(feedPage({u"a"_s, u"b"_s}));
    server.play(feedPage({u"b"_s, u"a"_s}));
    server.play(feedPage({u"c"_s}));
    server.play(feedPage({}));
    EXPECT_EQ(fetch(), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
    EXPECT_EQ(log.at(3), info(u"Page 2: 2 tracks (total 2)"_s));
}

TEST_F(LibraryReader, theWholeListHasNoTwoRecordsWithOneId)
{
    server.play(feedPage({u"a"_s, u"a"_s, u"b"_s}));
    server.play(feedPage({u"b"_s, u"c"_s, u"a"_s}));
    server.play(feedPage({}));
    EXPECT_EQ(fetch(), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
}

TEST_F(LibraryReader, aListAtTheRootIsAPageToo)
{
    server.play(json(R"([{"id": "a"}])"));
    server.play(json("[]"));
    EXPECT_EQ(fetch(), QStringList{u"a"_s});
    EXPECT_TRUE(engine.lastFetchComplete());
}

TEST_F(LibraryReader, aPageWithoutAListOfRecordsEndsTheLibrary)
{
    for (const char* const body : {R"({"clips": [1, {"id": "x"}]})", R"({"clips": null})", "{}", R"([["x"]])"}) {
        server.clear();
        server.play(feedPage({u"a"_s}));
        server.play(json(body));
        EXPECT_EQ(fetch(), QStringList{u"a"_s}) << body;
        EXPECT_TRUE(engine.lastFetchComplete()) << body;
    }
}

TEST_F(LibraryReader, thePauseBetweenPagesIs250Milliseconds)
{
    EXPECT_EQ(Engine(client, clock, Endpoints()).pagePauseMs, 250);
    engine.pagePauseMs = 250;
    server.play(feedPage({u"a"_s}));
    server.play(feedPage({u"b"_s}));
    server.play(feedPage({}));
    fetch();
    EXPECT_EQ(clock.sleeps(), slices({250ms, 250ms}));
}

TEST_F(LibraryReader, aServerMayBeSilentForAMinute)
{
    EXPECT_EQ(Engine(client, clock, Endpoints()).requestTimeout, 60s);
    engine.requestTimeout = 50ms;
    engine.maxPageAttempts = 1;
    server.play({hold()});
    const auto thrown = fetchError();
    ASSERT_TRUE(thrown);
    EXPECT_TRUE(thrown->sentence().startsWith(u"no answer for 0.05 s"_s)) << qPrintable(thrown->sentence());
}

TEST_F(LibraryReader, aRateLimitWithRetryAfterOf120Waits60Seconds)
{
    server.play(status(429, "Retry-After: 120\r\n"));
    server.play(feedPage({}));
    EXPECT_EQ(fetch(), QStringList());
    EXPECT_TRUE(engine.lastFetchComplete());
    EXPECT_EQ(clock.sleeps(), slices({60'000ms}));
    EXPECT_EQ(clock.sleeps().size(), 400U);
    EXPECT_THAT(remarks(), ElementsAre(info(u"Page 1 returned HTTP 429 (rate limited); retrying in 60s"_s)));
}

TEST_F(LibraryReader, aRetryAfterOfZeroWaitsAsIfThereWereNone)
{
    server.play(status(429, "Retry-After: 0\r\n"));
    server.play(status(429, "Retry-After: 0\r\n"));
    server.play(feedPage({}));
    fetch();
    EXPECT_EQ(clock.sleeps(), slices({2'000ms, 4'000ms}));
}

TEST_F(LibraryReader, theFourthRateLimitInARowEndsTheReadAfterThreeWaits)
{
    server.play(feedPage({u"a"_s}));
    server.play(status(429));
    EXPECT_EQ(fetch(), QStringList{u"a"_s});
    EXPECT_FALSE(engine.lastFetchComplete());
    EXPECT_EQ(server.requests().size(), 5);
    EXPECT_EQ(clock.sleeps(), slices({2'000ms, 4'000ms, 8'000ms}));
    EXPECT_THAT(
        remarks(),
        ElementsAre(
            info(u"Page 2 returned HTTP 429 (rate limited); retrying in 2s"_s),
            info(u"Page 2 returned HTTP 429 (rate limited); retrying in 4s"_s),
            info(u"Page 2 returned HTTP 429 (rate limited); retrying in 8s"_s),
            error(u"Suno is still rate-limiting page 2 after 4 attempts; keeping the 1 tracks read so far."_s)));
}

TEST_F(LibraryReader, aRateLimitOnTheFirstPageGivesNoTracksAndNoError)
{
    server.play(status(429));
    EXPECT_EQ(fetch(), QStringList());
    EXPECT_FALSE(engine.lastFetchComplete());
    EXPECT_EQ(remarks().back(),
              error(u"Suno is still rate-limiting page 1 after 4 attempts; keeping the 0 tracks read so far."_s));
}

TEST_F(LibraryReader, noAttemptsOrFewerCountAsOne)
{
    for (const int attempts : {0, -3, 1}) {
        server.clear();
        server.play(status(500));
        engine.maxPageAttempts = attempts;
        const qsizetype before = server.requests().size();
        EXPECT_EQ(fetch(), QStringList());
        EXPECT_EQ(server.requests().size(), before + 1) << attempts;
    }
    EXPECT_THAT(clock.sleeps(), IsEmpty());
}

TEST_F(LibraryReader, aServersFailureIsTriedAgainInTheSameWords)
{
    server.play(status(503));
    server.play(status(599));
    server.play(status(500));
    server.play(feedPage({}));
    fetch();
    EXPECT_TRUE(engine.lastFetchComplete());
    EXPECT_EQ(clock.sleeps(), slices({800ms, 1'600ms, 3'200ms}));
    EXPECT_THAT(remarks(), ElementsAre(info(u"Page 1 returned HTTP 503 (rate limited); retrying in 1s"_s),
                                       info(u"Page 1 returned HTTP 599 (rate limited); retrying in 1s"_s),
                                       info(u"Page 1 returned HTTP 500 (rate limited); retrying in 3s"_s)));
}

TEST_F(LibraryReader, aServersFailureThatLastsKeepsWhatWasRead)
{
    server.play(feedPage({u"a"_s}));
    server.play(status(502));
    EXPECT_EQ(fetch(), QStringList{u"a"_s});
    EXPECT_FALSE(engine.lastFetchComplete());
    EXPECT_EQ(remarks().back(), error(u"Page 2 returned HTTP 502; keeping the 1 tracks read so far."_s));
}

TEST_F(LibraryReader, anyOtherStatusEndsTheReadAtOnce)
{
    server.play(status(404));
    EXPECT_EQ(fetch(), QStringList());
    EXPECT_FALSE(engine.lastFetchComplete());
    EXPECT_EQ(server.requests().size(), 1);
    EXPECT_THAT(remarks(), ElementsAre(error(u"Page 1 returned HTTP 404; keeping the 0 tracks read so far."_s)));
}

TEST_F(LibraryReader, aSessionRejectedBeforeAnythingWasReadIsThrown)
{
    for (const int code : {401, 403}) {
        server.clear();
        server.play(status(code));
        const auto thrown = fetchError();
        ASSERT_TRUE(thrown);
        EXPECT_EQ(thrown->code(), code);
        EXPECT_EQ(thrown->sentence(),
                  u"Suno rejected the session (HTTP %1). Open the Suno tab and sign in again."_s.arg(code));
        EXPECT_TRUE(engine.lastFetchComplete());
    }
    EXPECT_THAT(remarks(), IsEmpty());
}

TEST_F(LibraryReader, aSessionRejectedLaterKeepsWhatWasRead)
{
    server.play(feedPage({u"a"_s, u"b"_s}));
    server.play(status(403));
    EXPECT_EQ(fetch(), (QStringList{u"a"_s, u"b"_s}));
    EXPECT_FALSE(engine.lastFetchComplete());
    EXPECT_THAT(
        remarks(),
        ElementsAre(error(u"Suno rejected the session at page 2 (HTTP 403); keeping the 2 tracks read so far."_s)));
}

TEST_F(LibraryReader, aConnectionThatKeepsBreakingBeforeAnythingWasReadIsThrown)
{
    server.play(broken());
    const auto thrown = fetchError();
    ASSERT_TRUE(thrown);
    EXPECT_EQ(thrown->code(), 0);
    EXPECT_FALSE(thrown->sentence().isEmpty());
    EXPECT_TRUE(engine.lastFetchComplete());
    EXPECT_EQ(server.requests().size(), 4);
    EXPECT_EQ(clock.sleeps(), slices({800ms, 1'600ms, 3'200ms}));
    EXPECT_THAT(remarks(), ElementsAre(info(u"Page 1: %1; retrying in 1s"_s.arg(thrown->sentence())),
                                       info(u"Page 1: %1; retrying in 1s"_s.arg(thrown->sentence())),
                                       info(u"Page 1: %1; retrying in 3s"_s.arg(thrown->sentence()))));
}

TEST_F(LibraryReader, aConnectionThatKeepsBreakingLaterKeepsWhatWasRead)
{
    server.play(feedPage({u"a"_s}));
    server.play(broken());
    EXPECT_EQ(fetch(), QStringList{u"a"_s});
    EXPECT_FALSE(engine.lastFetchComplete());
    const LogLine last = remarks().back();
    EXPECT_EQ(last.level, LogLevel::error);
    EXPECT_TRUE(last.message.startsWith(u"Page 2 failed ("_s)) << qPrintable(last.message);
    EXPECT_TRUE(last.message.endsWith(u"); keeping the 1 tracks read so far."_s)) << qPrintable(last.message);
}

TEST_F(LibraryReader, aConnectionThatBreaksOnceIsNoLoss)
{
    server.play(broken());
    server.play(feedPage({u"a"_s}));
    server.play(feedPage({}));
    EXPECT_EQ(fetch(), QStringList{u"a"_s});
    EXPECT_TRUE(engine.lastFetchComplete());
}

TEST_F(LibraryReader, aPageThatIsNoJsonIsThrownWhateverWasRead)
{
    for (const char* const body : {"<html>", "", "{\"clips\": [", "17"}) {
        server.clear();
        server.play(feedPage({u"a"_s}));
        server.play(feedPage({u"b"_s}));
        server.play(json(body));
        const auto thrown = fetchError();
        ASSERT_TRUE(thrown) << body;
        EXPECT_TRUE(thrown->sentence().startsWith(u"Page 3 is not readable: "_s)) << qPrintable(thrown->sentence());
        EXPECT_TRUE(engine.lastFetchComplete());
    }
}

TEST_F(LibraryReader, aLibraryBeyondThePageLimitIsReportedAsPartial)
{
    engine.onLog = {};
    server.play(feedPage({u"a"_s}));
    EXPECT_EQ(fetch(), QStringList{u"a"_s});
    EXPECT_FALSE(engine.lastFetchComplete());
    EXPECT_EQ(server.requests().size(), 2000);
}

TEST_F(LibraryReader, theFlagTellsOfTheLastReadOnly)
{
    server.play(status(404));
    server.play(feedPage({}));
    EXPECT_TRUE(engine.lastFetchComplete());
    fetch();
    EXPECT_FALSE(engine.lastFetchComplete());
    fetch();
    EXPECT_TRUE(engine.lastFetchComplete());
}

TEST_F(LibraryReader, looksLikeABrowserToTheApi)
{
    server.play(feedPage({}));
    fetch();
    EXPECT_EQ(headerIn(server.requests().front(), "User-Agent"),
              "Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) AppleWebKit/537.36 (KHTML, like Gecko)");
}

using WorkspaceReader = EngineTest;

const QByteArray project = R"([{"id": "0123456789abcdef0123456789abcdef", "name": "Album"}])";

TEST_F(WorkspaceReader, theAddressesAreTriedInOrderUntilOneListsAny)
{
    server.play(status(500));
    server.play(json("no json"));
    server.play(json(project));
    const QList<Workspace> found = QCoro::waitFor(engine.fetchWorkspaces(u"token"_s));
    EXPECT_THAT(found, ElementsAre(Workspace{.id = u"0123456789abcdef0123456789abcdef"_s, .name = u"Album"_s}));
    QList<QByteArray> targets;
    for (const QByteArray& head : server.requests())
        targets.append(targetOf(head));
    EXPECT_THAT(targets, ElementsAre("/api/project/me", "/api/project/", "/api/projects"));
    EXPECT_THAT(log, ElementsAre(info(u"Found 1 workspace(s)."_s)));
}

TEST_F(WorkspaceReader, theFirstListEndsTheSearch)
{
    server.play(json(R"({"projects": )" + project + "}"));
    EXPECT_EQ(QCoro::waitFor(engine.fetchWorkspaces(u"token"_s)).size(), 1);
    EXPECT_EQ(server.requests().size(), 1);
    EXPECT_EQ(headerIn(server.requests().front(), "Authorization"), "Bearer token");
}

TEST_F(WorkspaceReader, noListAnywhereIsAnEmptyOneWithoutAWord)
{
    server.play(broken());
    server.play(json("[]"));
    server.play(status(401));
    EXPECT_EQ(QCoro::waitFor(engine.fetchWorkspaces(u"token"_s)).size(), 0);
    EXPECT_EQ(server.requests().size(), 3);
    EXPECT_THAT(log, IsEmpty());
    EXPECT_THAT(clock.sleeps(), IsEmpty());
}

TEST_F(WorkspaceReader, aStopBeforeItBarsNoListing)
{
    engine.stop();
    server.play(json(project));
    EXPECT_EQ(QCoro::waitFor(engine.fetchWorkspaces(u"token"_s)).size(), 1);
}

} // namespace
} // namespace orvane::test
