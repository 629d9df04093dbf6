#include "tests/platform/network/Fetch.h"
#include "tests/support/ScriptedServer.h"

#include <QNetworkProxy>
#include <QThread>

#include <gmock/gmock.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace test;

TEST(HttpClient, anAnswerHasItsStatusHeadersAndBody)
{
    ScriptedServer server;
    server.play({send(answer("404 Not Found", "X-Kind: one\r\nx-kind: two\r\n", "nothing here"))});
    HttpClient client;
    const Outcome outcome = fetch(client, server.url());
    ASSERT_EQ(outcome.code(), std::nullopt) << outcome.sentence().toStdString();
    EXPECT_EQ(outcome.response.status, 404);
    EXPECT_EQ(outcome.response.body, "nothing here");
    EXPECT_EQ(outcome.response.size, 12);
    EXPECT_EQ(outcome.response.expectedContentLength, 12);
    EXPECT_EQ(outcome.response.header("X-KIND"), "one");
    EXPECT_EQ(outcome.response.header("X-Other"), std::nullopt);
}

TEST(HttpClient, theRequestHoldsWhatWasAskedForAndNothingElse)
{
    ScriptedServer server;
    server.play({send(answer("200 OK", "", "{}"))});
    HttpRequest request = requestFor(server.url(u"/api/feed?page=1&x=a%20b#part"_s));
    request.headers = {{.name = "User-Agent", .value = "Orvane"}};
    request.credentialFor = [](const QUrl&) { return HttpHeader{.name = "Authorization", .value = "Bearer canary"}; };
    HttpClient client;
    fetch(client, request);
    const QByteArray host = "Host: 127.0.0.1:" + QByteArray::number(server.port());
    EXPECT_THAT(server.requests(),
                testing::ElementsAre("GET /api/feed?page=1&x=a%20b HTTP/1.1\r\n" + host +
                                     "\r\nConnection: keep-alive\r\nAccept-Encoding: gzip\r\nUser-Agent: Orvane\r\n"
                                     "Authorization: Bearer canary\r\n\r\n"));
}

TEST(HttpClient, anAnswerComesBackOnTheCallersThread)
{
    ScriptedServer server;
    server.play({send(answer("200 OK", "", "{}"))});
    HttpClient client;
    const auto threadAfter = [](HttpClient* used, QUrl url) -> QCoro::Task<QThread*> {
        const QCoro::Task<HttpResponse> task = used->data(requestFor(url), {});
        co_await task;
        co_return QThread::currentThread();
    };
    EXPECT_EQ(QCoro::waitFor(threadAfter(&client, server.url())), QThread::currentThread());
}

TEST(HttpClient, noCookieOfAnAnswerIsSentBack)
{
    ScriptedServer server;
    server.play({send(answer("200 OK", "Set-Cookie: a=b; Path=/\r\n", "{}")), nextRequest()});
    HttpClient client;
    fetch(client, server.url());
    fetch(client, server.url());
    ASSERT_EQ(server.requests().size(), 2);
    EXPECT_FALSE(server.requests().last().toLower().contains("cookie"));
}

TEST(HttpClient, aConnectionServesTheNextRequestToo)
{
    ScriptedServer server;
    server.play({send(answer("200 OK", "", "{}")), nextRequest()});
    HttpClient client;
    for (int time = 0; time < 3; ++time)
        EXPECT_EQ(fetch(client, server.url()).response.body, "{}");
    EXPECT_EQ(server.connections(), 1);
}

TEST(HttpClient, aConnectionThatDiedBetweenRequestsIsReplaced)
{
    ScriptedServer server;
    server.play({send(answer("200 OK", "", "1")), nextRequest()});
    server.play({});
    server.play({send(answer("200 OK", "", "2"))});
    HttpClient client;
    EXPECT_EQ(fetch(client, server.url()).response.body, "1");
    EXPECT_EQ(fetch(client, server.url()).response.body, "2");
    EXPECT_EQ(server.connections(), 2);
}

TEST(HttpClient, aFreshConnectionThatClosesIsNotTriedAgain)
{
    ScriptedServer server;
    server.play({});
    HttpClient client;
    EXPECT_EQ(fetch(client, server.url()).code(), HttpError::Code::Transport);
    EXPECT_EQ(server.requests().size(), 1);
}

TEST(HttpClient, aHeaderThatWouldBecomeTwoLinesIsNotSent)
{
    ScriptedServer server;
    server.play({send(answer("200 OK", "", "{}"))});
    HttpRequest request = requestFor(server.url());
    request.headers = {{.name = "X", .value = "a\r\nCookie: b"}};
    HttpClient client;
    EXPECT_EQ(fetch(client, request).code(), HttpError::Code::Transport);
    EXPECT_TRUE(server.requests().isEmpty());
}

TEST(HttpClient, onlyWebAddressesAreFetched)
{
    HttpClient client;
    for (const QString& address : {u"file:///etc/hostname"_s, u"ftp://127.0.0.1/x"_s, u"http:///x"_s, u""_s, u"/x"_s}) {
        const Outcome outcome = fetch(client, QUrl(address));
        EXPECT_EQ(outcome.code(), HttpError::Code::Transport) << address.toStdString();
        EXPECT_EQ(outcome.sentence(), u"bad URL");
    }
}

TEST(HttpClient, twoRequestsAtOnceGetTheirOwnAnswers)
{
    ScriptedServer one;
    ScriptedServer other;
    one.play({gate(), send(answer("200 OK", "", "one"))});
    other.play({send(answer("200 OK", "", "other"))});
    HttpClient client;
    const QCoro::Task<Outcome> waiting = outcomeOf(client.data(requestFor(one.url()), {}));
    ASSERT_TRUE(one.waitForGate());
    EXPECT_EQ(fetch(client, other.url()).response.body, "other");
    one.openGate();
    EXPECT_EQ(QCoro::waitFor(waiting).response.body, "one");
}

TEST(HttpClient, aLoopbackAddressIsReachedWithoutTheSystemsProxy)
{
    ScriptedServer server;
    server.play({send(answer("200 OK", "", "direct"))});
    const ScriptedServer proxy(u"127.0.0.2"_s);
    QNetworkProxy::setApplicationProxy({QNetworkProxy::HttpProxy, u"127.0.0.2"_s, proxy.port()});
    HttpClient client;
    const Outcome outcome = fetch(client, server.url());
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    EXPECT_EQ(outcome.response.body, "direct");
    EXPECT_EQ(proxy.connections(), 0);
}

TEST(HttpClient, aStopBeforeTheStartMakesNoRequest)
{
    ScriptedServer server;
    server.play({send(answer("200 OK", "", "{}"))});
    HttpClient client;
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(fetch(client, requestFor(server.url()), stop.get_token()).code(), HttpError::Code::Cancelled);
    EXPECT_EQ(server.connections(), 0);
}

} // namespace
} // namespace orvane
