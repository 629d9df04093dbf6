#include "suno/SaveClip.h"
#include "tests/platform/network/Faults.h"
#include "tests/suno/EngineTest.h"

#include <algorithm>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString canary = u"canary-5f3759df"_s;

/// Everything that a server can do wrong, at each place where the engine asks it for something.
class FaultMatrix : public EngineTest, public testing::WithParamInterface<NetworkFault>
{
protected:
    FaultMatrix()
        : EngineTest(smallLimits(GetParam().stallWindow))
    {
    }

    void playFault()
    {
        engine.requestTimeout = GetParam().timeout;
        server.play(GetParam().script);
        for (int attempt = 0; attempt < engine.maxPageAttempts; ++attempt)
            server.openGate();
    }

    ReadOutcome readAll() { return read({}, canary); }

    /// Lines at the level of an error that name what failed.
    int errorsThatName(const QString& what) const
    {
        const auto names = [&what](const LogLine& line) {
            return line.level == LogLevel::error && line.message.contains(what);
        };
        return static_cast<int>(std::count_if(log.begin(), log.end(), names));
    }

    void expectNoSecretIn(const QString& text) const { EXPECT_FALSE(text.contains(canary)) << qPrintable(text); }

    void expectNoSecretInTheLog() const
    {
        for (const LogLine& line : log)
            expectNoSecretIn(line.message);
    }
};

TEST_P(FaultMatrix, onTheFirstPageIsThrownOrNamedAndNeverTakenForAnEmptyLibrary)
{
    playFault();
    const ReadOutcome outcome = readAll();
    EXPECT_TRUE(outcome.clips.isEmpty());
    if (outcome.error) {
        EXPECT_FALSE(outcome.error->sentence().isEmpty());
        expectNoSecretIn(outcome.error->sentence());
    } else {
        EXPECT_FALSE(engine.lastFetchComplete());
        EXPECT_EQ(errorsThatName(u"age 1"_s), 1);
    }
    expectNoSecretInTheLog();
}

TEST_P(FaultMatrix, onALaterPageKeepsWhatWasReadOrNamesThePageThatIsNoJson)
{
    server.play(feedPage({u"a"_s}));
    const auto listen = engine.onLog;
    engine.onLog = [this, listen](const QString& message, LogLevel level) {
        listen(message, level);
        if (!message.startsWith(u"Page 1:"))
            return;
        server.clear();
        playFault();
    };
    const ReadOutcome outcome = readAll();
    if (outcome.error) {
        EXPECT_TRUE(outcome.error->sentence().startsWith(u"Page 2 is not readable: "_s))
            << qPrintable(outcome.error->sentence());
        EXPECT_EQ(GetParam().data.status, 200);
    } else {
        EXPECT_EQ(outcome.clips.size(), 1);
        EXPECT_FALSE(engine.lastFetchComplete());
        EXPECT_EQ(errorsThatName(u"age 2"_s), 1);
    }
    expectNoSecretInTheLog();
}

TEST_P(FaultMatrix, onAnAssetLeavesAWholeFileOrNoneAndNamesTheTrack)
{
    playFault();
    const Clip clip{.id = u"a"_s, .title = u"T"_s, .audioURL = server.url(u"/a?signature="_s + canary).toString()};
    const ClipResult result =
        QCoro::waitFor(saveClip(engine, clip, {{Asset::audio}, folder.path(), canary}, u"001 - T"_s, u"T"_s));
    EXPECT_FALSE(result.stopped);
    if (result.problems == 0) {
        EXPECT_EQ(GetParam().download.status, 200);
        EXPECT_EQ(namesInFolder(), QStringList{u"001 - T.mp3"_s});
        EXPECT_FALSE(contents(path(u"001 - T.mp3"_s)).isEmpty());
    } else {
        EXPECT_EQ(namesInFolder(), QStringList());
        EXPECT_EQ(errorsThatName(u"MP3 failed for T: "_s), 1);
    }
    expectNoSecretInTheLog();
}

INSTANTIATE_TEST_SUITE_P(Engine, FaultMatrix, testing::ValuesIn(networkFaults()),
                         [](const auto& fault) { return fault.param.name; });

bool isTriedAgain(const Ending& ending)
{
    return ending.code || ending.status == 429 || ending.status >= 500;
}

QList<NetworkFault> faultsThatAreTriedAgain()
{
    QList<NetworkFault> faults = networkFaults();
    faults.removeIf(
        [](const NetworkFault& fault) { return !isTriedAgain(fault.data) || !isTriedAgain(fault.download); });
    return faults;
}

/// The user stops while the engine waits before another try.
class StopBehindFault : public FaultMatrix
{
protected:
    StopBehindFault()
    {
        playFault();
        clock.onSleep = [this] {
            engine.stop();
            askedBefore = server.requests().size();
        };
    }

    void expectTheStopToBeTheEnd() const
    {
        EXPECT_GE(askedBefore, 0) << "there was a wait to stop in";
        EXPECT_EQ(server.requests().size(), std::max<qsizetype>(askedBefore, 0));
        EXPECT_EQ(clock.sleeps().size(), 1U);
        EXPECT_EQ(errorsThatName({}), 0);
        expectNoSecretInTheLog();
    }

    qsizetype askedBefore = -1;
};

TEST_P(StopBehindFault, endsTheReadWithoutAnError)
{
    const ReadOutcome outcome = readAll();
    EXPECT_FALSE(outcome.error);
    EXPECT_TRUE(outcome.clips.isEmpty());
    EXPECT_FALSE(engine.lastFetchComplete());
    expectTheStopToBeTheEnd();
}

TEST_P(StopBehindFault, endsTheDownloadWithoutAFile)
{
    EXPECT_EQ(download(), DownloadOutcome::stopped());
    EXPECT_EQ(namesInFolder(), QStringList());
    expectTheStopToBeTheEnd();
}

INSTANTIATE_TEST_SUITE_P(Engine, StopBehindFault, testing::ValuesIn(faultsThatAreTriedAgain()),
                         [](const auto& fault) { return fault.param.name; });

} // namespace
} // namespace orvane::test
