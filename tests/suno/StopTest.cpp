#include "tests/suno/EngineTest.h"

#include <thread>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class Stop : public EngineTest
{
protected:
    ~Stop() override
    {
        if (stopper.joinable())
            stopper.join();
    }

    /// Stops, from another thread, when the server has reached its gate.
    void stopAtGate()
    {
        stopper = std::thread([this] {
            EXPECT_TRUE(server.waitForGate());
            engine.stop();
        });
    }

    /// The server's answer has come to its end, and the engine has not heard of it yet.
    void answerWhileTheEngineWaits()
    {
        ASSERT_TRUE(server.waitForGate());
        server.openGate();
        ASSERT_TRUE(server.waitForLeaving());
    }

    std::thread stopper;
};

TEST_F(Stop, beforeTheReadAsksForNothing)
{
    engine.stop();
    EXPECT_EQ(fetch(), QStringList());
    EXPECT_FALSE(engine.lastFetchComplete());
    EXPECT_THAT(server.requests(), IsEmpty());
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(Stop, aRunWithoutResetReturnsAtOnceAndOneWithResetReads)
{
    engine.stop();
    fetch();
    engine.reset();
    EXPECT_FALSE(engine.isStopping());
    server.play(feedPage({}));
    fetch();
    EXPECT_TRUE(engine.lastFetchComplete());
}

TEST_F(Stop, duringTheWaitOfARetryAfterEndsTheReadWithinASliceAndKeepsTheClips)
{
    server.play(feedPage({u"a"_s}));
    server.play(status(429, "Retry-After: 60\r\n"));
    clock.onSleep = [this] {
        if (clock.sleeps().size() == 3)
            engine.stop();
    };
    EXPECT_EQ(fetch(), QStringList{u"a"_s});
    EXPECT_FALSE(engine.lastFetchComplete());
    EXPECT_EQ(clock.sleeps(), (std::vector<std::chrono::milliseconds>{150ms, 150ms, 150ms}));
    EXPECT_EQ(server.requests().size(), 2);
    EXPECT_THAT(remarks(), ElementsAre(info(u"Page 2 returned HTTP 429 (rate limited); retrying in 60s"_s)));
}

TEST_F(Stop, duringThePauseBetweenPagesKeepsThePage)
{
    engine.pagePauseMs = 250;
    server.play(feedPage({u"a"_s}));
    clock.onSleep = [this] { engine.stop(); };
    EXPECT_EQ(fetch(), QStringList{u"a"_s});
    EXPECT_FALSE(engine.lastFetchComplete());
    EXPECT_EQ(server.requests().size(), 1);
}

TEST_F(Stop, whileTheServerIsSilentEndsTheReadWithoutALine)
{
    server.play(feedPage({u"a"_s}));
    server.play({gate(), hold()});
    stopAtGate();
    EXPECT_EQ(fetch(), QStringList{u"a"_s});
    EXPECT_FALSE(engine.lastFetchComplete());
    EXPECT_THAT(remarks(), IsEmpty());
    EXPECT_THAT(clock.sleeps(), IsEmpty());
}

TEST_F(Stop, amidThePagesBodyOfTheFirstPageGivesNoTracksAndNoError)
{
    server.play({send("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n{"), gate(), hold()});
    stopAtGate();
    EXPECT_EQ(fetch(), QStringList());
    EXPECT_FALSE(engine.lastFetchComplete());
    EXPECT_THAT(remarks(), IsEmpty());
}

TEST_F(Stop, whenATransportErrorComesAtTheSameMomentSaysNothingOfATryToCome)
{
    server.play(feedPage({u"a"_s}));
    server.play(broken());
    engine.onLog = [this](const QString& message, LogLevel level) {
        log.push_back({.message = message, .level = level});
        if (message.startsWith(u"Querying page 2"))
            engine.stop();
    };
    EXPECT_EQ(fetch(), QStringList{u"a"_s});
    EXPECT_THAT(remarks(), IsEmpty());
}

TEST_F(Stop, thatComesBehindARateLimitSaysNothingOfATryToCome)
{
    server.play({gate(), send("HTTP/1.1 429 Slow\r\nConnection: close\r\nContent-Length: 0\r\n\r\n"), hold()});
    auto reading = outcomeOf(engine.fetchAllClips({}, u"token"_s));
    answerWhileTheEngineWaits();
    engine.stop();
    EXPECT_THAT(QCoro::waitFor(std::move(reading)).clips, IsEmpty());
    EXPECT_FALSE(engine.lastFetchComplete());
    EXPECT_THAT(remarks(), IsEmpty());
}

TEST_F(Stop, endsTheReadingOfTheProjectList)
{
    server.play({gate(), hold()});
    stopAtGate();
    EXPECT_THAT(QCoro::waitFor(engine.fetchWorkspaces(u"token"_s)), IsEmpty());
    EXPECT_EQ(server.requests().size(), 1);
}

TEST_F(Stop, beforeADownloadAsksForNothing)
{
    engine.stop();
    EXPECT_EQ(download(), DownloadOutcome::stopped());
    EXPECT_THAT(server.requests(), IsEmpty());
    EXPECT_EQ(namesInFolder(), QStringList());
}

TEST_F(Stop, amidATransferLeavesNothingBehindAndNoLine)
{
    server.play({send("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\nabc"), gate(), hold()});
    stopAtGate();
    EXPECT_EQ(download(), DownloadOutcome::stopped());
    EXPECT_EQ(namesInFolder(), QStringList());
    EXPECT_THAT(log, IsEmpty());
    server.openGate();
    EXPECT_TRUE(server.waitForLeaving());
}

TEST_F(Stop, whileTheServerIsSilentEndsTheDownload)
{
    server.play({gate(), hold()});
    stopAtGate();
    EXPECT_EQ(download(), DownloadOutcome::stopped());
    EXPECT_EQ(namesInFolder(), QStringList());
}

TEST_F(Stop, amidTheLastAttemptIsNoFailure)
{
    server.play({gate(), hold()});
    stopAtGate();
    EXPECT_EQ(download(1), DownloadOutcome::stopped());
}

TEST_F(Stop, thatComesBehindABrokenAnswerIsNoFailure)
{
    server.play({gate(), send("HTTP/1.1 200 OK\r\nContent-Length: -5\r\n\r\n"), hold()});
    auto saving = engine.downloadFile(server.url().toString(), target(), u"token"_s, 1);
    answerWhileTheEngineWaits();
    engine.stop();
    EXPECT_EQ(QCoro::waitFor(std::move(saving)), DownloadOutcome::stopped());
    EXPECT_EQ(namesInFolder(), QStringList());
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(Stop, duringAWaitGivesStoppedAtTheNextAttempt)
{
    server.play(status(503));
    clock.onSleep = [this] { engine.stop(); };
    EXPECT_EQ(download(), DownloadOutcome::stopped());
    EXPECT_EQ(server.requests().size(), 1);
    EXPECT_EQ(clock.sleeps().size(), 1U);
    EXPECT_THAT(log, ElementsAre(info(u"HTTP 503; retrying in 1s"_s)));
}

TEST_F(Stop, aWaitIsCutInSlicesOf150Milliseconds)
{
    QCoro::waitFor(engine.stoppableWait(400ms));
    EXPECT_EQ(clock.sleeps(), (std::vector<std::chrono::milliseconds>{150ms, 150ms, 100ms}));
    clock.forget();
    QCoro::waitFor(engine.stoppableWait(0ms));
    QCoro::waitFor(engine.stoppableWait(-5ms));
    engine.stop();
    QCoro::waitFor(engine.stoppableWait(400ms));
    EXPECT_THAT(clock.sleeps(), IsEmpty());
}

} // namespace
} // namespace orvane::test
