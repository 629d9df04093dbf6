#include "tests/platform/network/Faults.h"
#include "tests/platform/network/Fetch.h"

#include <QDir>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace test;

Ending endingOf(const Outcome& outcome)
{
    return {.status = outcome.response.status, .code = outcome.code()};
}

class HttpFaults : public testing::TestWithParam<NetworkFault>
{
protected:
    HttpRequest request() const
    {
        HttpRequest request = requestFor(server_.url(u"/x?signature=canary"_s));
        request.timeout = GetParam().timeout;
        request.credentialFor = [](const QUrl&) {
            return HttpHeader{.name = "Authorization", .value = "Bearer canary"};
        };
        return request;
    }

    /// Plays the fault's script; a gate in it is open.
    void playFault()
    {
        server_.play(GetParam().script);
        server_.openGate();
    }

    QString path() const { return folder_.filePath(u"track.mp3.download"_s); }

    void expectSentence(const Outcome& outcome) const
    {
        EXPECT_THAT(outcome.sentence().toStdString(), testing::HasSubstr(GetParam().words.toStdString()));
        EXPECT_FALSE(outcome.sentence().contains(u"canary")) << outcome.sentence().toStdString();
        EXPECT_EQ(outcome.error.has_value(), !outcome.sentence().isEmpty());
    }

    QTemporaryDir folder_;
    ScriptedServer server_;
    HttpClient client_{smallLimits(GetParam().stallWindow)};
};

TEST_P(HttpFaults, dataEndsAsItShould)
{
    playFault();
    const Outcome outcome = fetch(client_, request());
    EXPECT_EQ(endingOf(outcome), GetParam().data) << outcome.sentence().toStdString();
    expectSentence(outcome);
}

TEST_P(HttpFaults, aDownloadEndsAsItShouldAndLeavesAFileOnlyAfterA200)
{
    playFault();
    const Outcome outcome = download(client_, request(), path());
    EXPECT_EQ(endingOf(outcome), GetParam().download) << outcome.sentence().toStdString();
    const QStringList expected = outcome.response.status == 200 ? QStringList(u"track.mp3.download"_s) : QStringList();
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden), expected);
}

TEST_P(HttpFaults, aStopBehindTheLastByteEndsAtOnceAndLeavesNoFile)
{
    Script script = GetParam().script;
    script.removeIf([](const Step& step) { return step.kind != Step::Kind::send; });
    if (!GetParam().download.code && GetParam().script.size() == script.size())
        script.last().bytes.chop(1);
    script += {gate(), hold()};
    server_.play(script);
    std::stop_source stop;
    const QCoro::Task<Outcome> running = outcomeOf(client_.download(request(), path(), stop.get_token()));
    // An ending that the bytes themselves bring about may come first: then the stop finds nothing to do.
    ASSERT_TRUE(server_.waitForGate());
    stop.request_stop();
    const Outcome outcome = QCoro::waitFor(running);
    const bool stopped = outcome.code() == HttpError::Code::Cancelled;
    const bool mayComeFirst = GetParam().download != Ending{.status = 200, .code = std::nullopt};
    EXPECT_TRUE(stopped || (mayComeFirst && endingOf(outcome) == GetParam().download))
        << outcome.sentence().toStdString();
    EXPECT_TRUE(QDir(folder_.path()).isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Network, HttpFaults, testing::ValuesIn(networkFaults()),
                         [](const testing::TestParamInfo<NetworkFault>& tested) { return tested.param.name; });

/// Moments in a transfer at which the server waits and nothing but the stop can end the request.
struct Moment
{
    std::string name;
    Script script;
};

class HttpStop : public testing::TestWithParam<Moment>
{
};

TEST_P(HttpStop, endsTheRequestWhileTheServerStillWaits)
{
    ScriptedServer server;
    server.play(GetParam().script);
    const QTemporaryDir folder;
    HttpClient client;
    for (const bool toFile : {false, true}) {
        std::stop_source stop;
        const HttpRequest request = requestFor(server.url());
        QCoro::Task<HttpResponse> task = toFile ? client.download(request, folder.filePath(u"x"_s), stop.get_token())
                                                : client.data(request, stop.get_token());
        const QCoro::Task<Outcome> running = outcomeOf(std::move(task));
        ASSERT_TRUE(server.waitForGate(toFile ? 2 : 1));
        stop.request_stop();
        EXPECT_EQ(QCoro::waitFor(running).code(), HttpError::Code::Cancelled);
        EXPECT_TRUE(QDir(folder.path()).isEmpty());
    }
}

const QList<Moment>& moments()
{
    const QByteArray half = answerUnmeasured("200 OK", "Content-Length: 50\r\n", "hello");
    const QByteArray chunk = answerUnmeasured("200 OK", "Transfer-Encoding: chunked\r\n", "5\r\nhello\r\n");
    static const QList<Moment> all = {
        {.name = "beforeTheAnswer", .script = {gate()}},
        {.name = "inTheHead", .script = {send("HTTP/1.1 200 OK\r\nX: "), gate()}},
        {.name = "inTheBody", .script = {send(half), gate()}},
        {.name = "betweenChunks", .script = {send(chunk), gate()}},
        {.name = "inABodyWithoutLength", .script = {send("HTTP/1.1 200 OK\r\n\r\nhello"), gate()}},
        {.name = "afterAnInterimAnswer", .script = {send("HTTP/1.1 100 Continue\r\n\r\n"), gate()}},
    };
    return all;
}

INSTANTIATE_TEST_SUITE_P(Network, HttpStop, testing::ValuesIn(moments()),
                         [](const testing::TestParamInfo<Moment>& tested) { return tested.param.name; });

TEST(HttpFaultsOnTheWay, aRefusedConnectionNamesTheHost)
{
    QUrl closed;
    {
        const ScriptedServer gone;
        closed = gone.url(u"/x?signature=canary"_s);
    }
    HttpClient client;
    const Outcome outcome = fetch(client, closed);
    EXPECT_EQ(outcome.code(), HttpError::Code::Transport);
    EXPECT_EQ(outcome.sentence(), u"Connection refused (127.0.0.1)");
}

TEST(HttpFaultsOnTheWay, anUnknownHostIsNamed)
{
    HttpClient client;
    const Outcome outcome = fetch(client, QUrl(u"http://nowhere.invalid/x?signature=canary"_s));
    EXPECT_EQ(outcome.code(), HttpError::Code::Transport);
    EXPECT_THAT(outcome.sentence().toStdString(), testing::EndsWith(" (nowhere.invalid)"));
}

TEST(HttpFaultsOnTheWay, aBodyWithoutAnnouncementIsCutAtTheLimitWhileItComes)
{
    ScriptedServer server;
    server.play({send("HTTP/1.1 200 OK\r\n\r\n"), send(QByteArray(1024, 'x'), 9), hold()});
    HttpClient client(smallLimits());
    EXPECT_EQ(fetch(client, server.url()).code(), HttpError::Code::TooLarge);
    EXPECT_TRUE(server.waitForLeaving());
}

TEST(HttpFaultsOnTheWay, anAnnouncementBeyondTheLimitIsRefusedAtTheHead)
{
    ScriptedServer server;
    server.play({send(answerUnmeasured("200 OK", "Content-Length: 8193\r\n", "")), hold()});
    HttpClient client(smallLimits());
    EXPECT_EQ(fetch(client, server.url()).code(), HttpError::Code::TooLarge);
}

TEST(HttpFaultsOnTheWay, aBodyOfExactlyTheLimitIsTaken)
{
    ScriptedServer server;
    server.play({send(answer("200 OK", "", QByteArray(8192, 'x')))});
    HttpClient client(smallLimits());
    EXPECT_EQ(fetch(client, server.url()).response.size, 8192);
}

TEST(HttpFaultsOnTheWay, aGzippedBodyIsUnpackedAndHasNoAnnouncedLength)
{
    ScriptedServer server;
    const QByteArray packed = QByteArray::fromBase64("H4sIAAAAAAAAA8tIzcnJVyjPL8pJAQCFEUoNCwAAAA==");
    server.play({send(answer("200 OK", "Content-Encoding: gzip\r\n", packed))});
    HttpClient client;
    const Outcome outcome = fetch(client, server.url());
    EXPECT_EQ(outcome.response.body, "hello world");
    EXPECT_EQ(outcome.response.size, 11);
    EXPECT_EQ(outcome.response.expectedContentLength, std::nullopt);
}

TEST(HttpFaultsOnTheWay, anAnswerFasterThanTheStallRuleIsNotCut)
{
    HttpClient::Limits limits;
    limits.stallWindow = std::chrono::milliseconds(1);
    limits.stallBytes = 0;
    ScriptedServer server;
    server.play({send("HTTP/1.1 200 OK\r\nContent-Length: 200000\r\n\r\n"), send(QByteArray(1000, 'x'), 200)});
    HttpClient client(limits);
    EXPECT_EQ(fetch(client, server.url()).response.size, 200000);
}

} // namespace
} // namespace orvane
