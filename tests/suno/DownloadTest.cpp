#include "tests/suno/EngineTest.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

const QByteArray sound = QByteArray(100'000, 's');

Script file(const QByteArray& body = sound)
{
    return {send(answer("200 OK", "Content-Type: audio/mpeg\r\n", body))};
}

class Download : public EngineTest
{
protected:
    void put(const QString& path, const QByteArray& bytes) const
    {
        QFile there(path);
        ASSERT_TRUE(there.open(QIODevice::WriteOnly));
        there.write(bytes);
    }

    void expectNothingLeft() const { EXPECT_EQ(namesInFolder(), QStringList()); }
};

TEST_F(Download, aFileArrivesWholeUnderItsName)
{
    server.play(file());
    EXPECT_EQ(download(), DownloadOutcome::downloaded());
    EXPECT_EQ(contents(target()), sound);
    EXPECT_EQ(namesInFolder(), QStringList{u"001 - Song.mp3"_s});
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(Download, aFileThatIsThereIsLeftAloneAndNothingIsAsked)
{
    put(target(), "x");
    EXPECT_EQ(download(), DownloadOutcome::alreadyExists());
    EXPECT_EQ(download(u"no address"_s, target()), DownloadOutcome::alreadyExists());
    EXPECT_EQ(contents(target()), "x");
    EXPECT_THAT(server.requests(), IsEmpty());
}

TEST_F(Download, anEmptyLeftoverIsFetchedAgain)
{
    put(target(), {});
    server.play(file());
    EXPECT_EQ(download(), DownloadOutcome::downloaded());
    EXPECT_EQ(contents(target()), sound);
}

TEST_F(Download, aLeftoverOfAKilledRunIsReplaced)
{
    put(target() + u".part"_s, QByteArray(500'000, 'o'));
    server.play(file());
    EXPECT_EQ(download(), DownloadOutcome::downloaded());
    EXPECT_EQ(contents(target()), sound);
    EXPECT_EQ(namesInFolder(), QStringList{u"001 - Song.mp3"_s});
}

TEST_F(Download, anAddressThatLeadsNowhereIsABadUrl)
{
    for (const QString& address : {QString(), u"song.mp3"_s, u"file:///etc/passwd"_s, u"ftp://a/b"_s, u"https://"_s,
                                   u"http://a:b:c/"_s, u"javascript:1"_s})
        EXPECT_EQ(download(address, target()), DownloadOutcome::failed(u"bad URL"_s)) << qPrintable(address);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(Download, withoutAnAttemptTheErrorIsUnknown)
{
    EXPECT_EQ(download(0), DownloadOutcome::failed(u"unknown error"_s));
    EXPECT_EQ(download(-1), DownloadOutcome::failed(u"unknown error"_s));
    EXPECT_THAT(server.requests(), IsEmpty());
}

TEST_F(Download, aRefusalFailsOnTheFirstAnswer)
{
    for (const int code : {400, 401, 403, 404, 410}) {
        server.clear();
        server.play(status(code));
        const qsizetype before = server.requests().size();
        EXPECT_EQ(download(), DownloadOutcome::failed(u"HTTP %1"_s.arg(code)));
        EXPECT_EQ(server.requests().size(), before + 1);
    }
    EXPECT_THAT(log, IsEmpty());
    EXPECT_THAT(clock.sleeps(), IsEmpty());
    expectNothingLeft();
}

TEST_F(Download, aServersFailureIsTriedThreeTimes)
{
    server.play(status(503));
    EXPECT_EQ(download(), DownloadOutcome::failed(u"HTTP 503"_s));
    EXPECT_EQ(server.requests().size(), 3);
    EXPECT_EQ(clock.sleeps(), slices({800ms, 1'600ms}));
    EXPECT_THAT(log, ElementsAre(info(u"HTTP 503; retrying in 1s"_s), info(u"HTTP 503; retrying in 1s"_s)));
    expectNothingLeft();
}

TEST_F(Download, aRateLimitUsesTheDelayThatTheServerAsksFor)
{
    server.play(status(429, "Retry-After: 7\r\n"));
    server.play(status(429));
    server.play(file());
    EXPECT_EQ(download(), DownloadOutcome::downloaded());
    EXPECT_EQ(clock.sleeps(), slices({7'000ms, 4'000ms}));
    EXPECT_THAT(log, ElementsAre(info(u"HTTP 429; retrying in 7s"_s), info(u"HTTP 429; retrying in 4s"_s)));
}

TEST_F(Download, anEmptyBodyFailsAfterWaitsOf800And1600MillisecondsWithoutALine)
{
    server.play(file({}));
    EXPECT_EQ(download(), DownloadOutcome::failed(u"empty response body"_s));
    EXPECT_EQ(server.requests().size(), 3);
    EXPECT_EQ(clock.sleeps(), slices({800ms, 1'600ms}));
    EXPECT_THAT(log, IsEmpty());
    expectNothingLeft();
}

TEST_F(Download, aTransferThatEndsEarlyIsToldWithItsSizesAndTriedAgain)
{
    server.play({send("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n" + QByteArray(400, 's'))});
    EXPECT_EQ(download(), DownloadOutcome::failed(u"truncated transfer (400 of 1000 bytes)"_s));
    EXPECT_EQ(clock.sleeps(), slices({800ms, 1'600ms}));
    const LogLine line = info(u"truncated transfer (400 of 1000 bytes); retrying"_s);
    EXPECT_THAT(log, ElementsAre(line, line));
    expectNothingLeft();
}

TEST_F(Download, aBodyWithoutALengthPasses)
{
    server.play({send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n4\r\nabcd\r\n0\r\n\r\n")});
    EXPECT_EQ(download(), DownloadOutcome::downloaded());
    EXPECT_EQ(contents(target()), "abcd");
}

TEST_F(Download, aBrokenConnectionIsTriedAgainAndToldEachTime)
{
    server.play({send("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\nabc"), reset()});
    const DownloadOutcome outcome = download();
    EXPECT_EQ(outcome.kind, DownloadOutcome::Kind::failed);
    EXPECT_EQ(clock.sleeps(), slices({800ms, 1'600ms}));
    const LogLine line = info(outcome.reason + u"; retrying"_s);
    EXPECT_THAT(log, ElementsAre(line, line));
    expectNothingLeft();
}

TEST_F(Download, theWaitsAfterABrokenConnectionHaveNoCap)
{
    server.play(broken());
    EXPECT_EQ(download(7).kind, DownloadOutcome::Kind::failed);
    EXPECT_EQ(clock.sleeps(), slices({800ms, 1'600ms, 3'200ms, 6'400ms, 12'800ms, 25'600ms}));
}

class StallingDownload : public EngineTest
{
protected:
    StallingDownload()
        : EngineTest({.stallWindow = 200ms, .stallBytes = 1024})
    {
    }
};

TEST_F(StallingDownload, aTransferThatStallsIsGivenUp)
{
    server.play({send("HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n"), dribble()});
    const DownloadOutcome outcome = download(2);
    EXPECT_EQ(outcome.kind, DownloadOutcome::Kind::failed);
    EXPECT_TRUE(outcome.reason.contains(u"stalled")) << qPrintable(outcome.reason);
    EXPECT_THAT(log, ElementsAre(info(outcome.reason + u"; retrying"_s)));
    EXPECT_EQ(namesInFolder(), QStringList());
}

TEST_F(Download, aRefusedRedirectIsATransportError)
{
    server.play({send(answer("302 Found", "Location: file:///etc/passwd\r\n", {}))});
    EXPECT_EQ(download().kind, DownloadOutcome::Kind::failed);
    EXPECT_EQ(server.requests().size(), 3);
    EXPECT_EQ(clock.sleeps(), slices({800ms, 1'600ms}));
    expectNothingLeft();
}

TEST_F(Download, aFolderInTheFilesPlaceIsNamedAndNothingIsAsked)
{
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"001 - Song.mp3"_s));
    EXPECT_EQ(download(), DownloadOutcome::failed(u"001 - Song.mp3: Is a directory"_s));
    EXPECT_THAT(server.requests(), IsEmpty());
}

TEST_F(Download, aFolderInTheStagingFilesPlaceFailsWithTheFilesName)
{
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"001 - Song.mp3.part"_s));
    server.play(file());
    const DownloadOutcome outcome = download();
    EXPECT_EQ(outcome.kind, DownloadOutcome::Kind::failed);
    EXPECT_TRUE(outcome.reason.startsWith(u"001 - Song.mp3: "_s)) << qPrintable(outcome.reason);
    EXPECT_EQ(namesInFolder(), QStringList{u"001 - Song.mp3.part"_s});
}

TEST_F(Download, aPipeOrALinkInTheStagingFilesPlaceIsReplaced)
{
    const QString elsewhere = path(u"elsewhere"_s);
    put(elsewhere, "untouched");
    ASSERT_TRUE(QFile::link(elsewhere, target() + u".part"_s));
    server.play(file());
    EXPECT_EQ(download(), DownloadOutcome::downloaded());
    EXPECT_EQ(contents(elsewhere), "untouched");
    ASSERT_EQ(::mkfifo(QFile::encodeName(path(u"b.mp3.part"_s)).constData(), 0600), 0);
    EXPECT_EQ(download(server.url().toString(), path(u"b.mp3"_s)), DownloadOutcome::downloaded());
    EXPECT_EQ(contents(path(u"b.mp3"_s)), sound);
}

TEST_F(Download, aFolderThatVanishedFailsWithTheFilesName)
{
    const DownloadOutcome outcome = download(server.url().toString(), path(u"gone/a.mp3"_s));
    EXPECT_EQ(outcome, DownloadOutcome::failed(u"a.mp3: No such file or directory"_s));
    EXPECT_THAT(log, ElementsAre(info(u"a.mp3: No such file or directory; retrying"_s),
                                 info(u"a.mp3: No such file or directory; retrying"_s)));
}

TEST_F(Download, twoProgramsDoNotFillOneStagingFile)
{
    Engine other(client, clock, Endpoints());
    server.play({send("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nab"), gate(), send("cde")});
    auto first = other.downloadFile(server.url().toString(), target(), {}, 1);
    ASSERT_TRUE(server.waitForGate());
    EXPECT_EQ(download(1), DownloadOutcome::failed(u"001 - Song.mp3: Device or resource busy"_s));
    server.openGate();
    EXPECT_EQ(QCoro::waitFor(std::move(first)), DownloadOutcome::downloaded());
    EXPECT_EQ(contents(target()), "abcde");
}

TEST_F(Download, aSecondRunOverTheSameFolderMakesNoRequest)
{
    server.play(file());
    for (const QString& name : {u"a.mp3"_s, u"b.mp3"_s})
        EXPECT_EQ(download(server.url().toString(), path(name)), DownloadOutcome::downloaded());
    const qsizetype before = server.requests().size();
    for (const QString& name : {u"a.mp3"_s, u"b.mp3"_s})
        EXPECT_EQ(download(server.url().toString(), path(name)), DownloadOutcome::alreadyExists());
    EXPECT_EQ(server.requests().size(), before);
}

TEST_F(Download, aClipWithoutAnAddressOfItsOwnLiesOnTheCdn)
{
    EXPECT_EQ(engine.audioAddress({.id = u"abc-1"_s, .title = {}}), server.url(u"/abc-1.mp3"_s).toString());
    EXPECT_EQ(engine.audioAddress({.id = u"a"_s, .title = {}, .audioURL = u"own"_s}), u"own"_s);
    EXPECT_EQ(engine.audioAddress({.id = u"a"_s, .title = {}, .audioURL = QString()}), QString());
    EXPECT_EQ(engine.audioAddress({.id = u"../x?y#z"_s, .title = {}}),
              server.url().toString() + u"..%2Fx%3Fy%23z.mp3"_s);
}

} // namespace
} // namespace orvane::test
