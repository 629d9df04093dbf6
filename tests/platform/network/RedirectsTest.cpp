#include "platform/network/Exchange.h"
#include "tests/platform/network/Fetch.h"
#include "tests/support/ScriptedServer.h"

#include <QDir>
#include <QTemporaryDir>
#include <qcoro/qcorofuture.h>

#include <gmock/gmock.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace test;

Script redirectTo(const QByteArray& location, const QByteArray& status = "302 Found")
{
    return {send(answer(status, "Location: " + location + "\r\n", "moved"))};
}

/// Two hosts, of which only the first may have the credential.
class Redirects : public testing::Test
{
protected:
    HttpRequest request() const
    {
        HttpRequest made = requestFor(home_.url(u"/start"_s));
        made.headers = {{.name = "X-Plain", .value = "everywhere"}};
        made.credentialFor = [](const QUrl& hop) -> std::optional<HttpHeader> {
            if (hop.host() != u"127.0.0.1")
                return std::nullopt;
            return HttpHeader{.name = "Authorization", .value = "Bearer canary"};
        };
        return made;
    }

    ScriptedServer home_;
    ScriptedServer foreign_{u"127.0.0.2"_s};
    HttpClient client_;
};

TEST_F(Redirects, everyRedirectIsFollowedWithAGet)
{
    for (const QByteArray status : {"301 Moved", "302 Found", "303 See Other", "307 Temporary", "308 Permanent"}) {
        home_.clear();
        home_.play(redirectTo("/end?x=1", status));
        home_.play({send(answer("200 OK", "", "here"))});
        const Outcome outcome = fetch(client_, request());
        EXPECT_EQ(outcome.response.status, 200) << status.constData();
        EXPECT_EQ(outcome.response.body, "here");
        EXPECT_TRUE(home_.requests().last().startsWith("GET /end?x=1 HTTP/1.1\r\n"));
    }
}

TEST_F(Redirects, theCredentialNeverReachesAnotherHost)
{
    home_.play(redirectTo(foreign_.url(u"/x"_s).toEncoded()));
    foreign_.play({send(answer("200 OK", "", "here"))});
    EXPECT_EQ(fetch(client_, request()).response.body, "here");
    ASSERT_EQ(foreign_.requests().size(), 1);
    EXPECT_FALSE(foreign_.requests().first().contains("canary"));
    EXPECT_TRUE(foreign_.requests().first().contains("\r\nX-Plain: everywhere\r\n"));
    EXPECT_TRUE(home_.requests().first().contains("\r\nAuthorization: Bearer canary\r\n"));
}

TEST_F(Redirects, aHostThatMayHaveTheCredentialGetsItAgainOnTheWayBack)
{
    home_.play(redirectTo(foreign_.url(u"/x"_s).toEncoded()));
    home_.play({send(answer("200 OK", "", "here"))});
    foreign_.play(redirectTo(home_.url(u"/end"_s).toEncoded()));
    EXPECT_EQ(fetch(client_, request()).response.body, "here");
    EXPECT_TRUE(home_.requests().last().contains("\r\nAuthorization: Bearer canary\r\n"));
    EXPECT_FALSE(foreign_.requests().first().contains("canary"));
}

TEST_F(Redirects, userInformationOfALocationIsNotSent)
{
    QUrl target = foreign_.url(u"/x"_s);
    target.setUserInfo(u"me:secret"_s);
    home_.play(redirectTo(target.toEncoded()));
    foreign_.play({send(answer("200 OK", "", "here"))});
    EXPECT_EQ(fetch(client_, request()).response.body, "here");
    EXPECT_FALSE(foreign_.requests().first().contains("secret"));
    EXPECT_FALSE(foreign_.requests().first().contains("Authorization"));
}

TEST_F(Redirects, fiveAreFollowedAndTheSixthIsNot)
{
    for (int hop = 0; hop < 5; ++hop)
        home_.play(redirectTo("/next"));
    home_.play({send(answer("200 OK", "", "here"))});
    EXPECT_EQ(fetch(client_, request()).response.body, "here");
    EXPECT_EQ(home_.requests().size(), 6);

    home_.clear();
    home_.play(redirectTo("/next"));
    EXPECT_EQ(fetch(client_, request()).code(), HttpError::Code::TooManyRedirects);
    EXPECT_EQ(home_.requests().size(), 12);
}

TEST_F(Redirects, aDownloadHoldsOnlyTheLastHopsBody)
{
    const QTemporaryDir folder;
    home_.play(redirectTo(foreign_.url(u"/x"_s).toEncoded()));
    foreign_.play({send(answer("200 OK", "", "the file"))});
    const QString path = folder.filePath(u"x"_s);
    EXPECT_EQ(download(client_, request(), path).response.size, 8);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "the file");
}

TEST_F(Redirects, theBodyOfARedirectIsNotWaitedFor)
{
    home_.play({send(answerUnmeasured("302 Found", "Location: /end\r\nContent-Length: 99\r\n", "")), hold()});
    home_.play({send(answer("200 OK", "", "here"))});
    EXPECT_EQ(fetch(client_, request()).response.body, "here");
}

TEST_F(Redirects, aStopBetweenHopsEndsTheRequest)
{
    home_.play(redirectTo(foreign_.url(u"/x"_s).toEncoded()));
    foreign_.play({gate()});
    std::stop_source stop;
    const QCoro::Task<Outcome> running = outcomeOf(client_.data(request(), stop.get_token()));
    ASSERT_TRUE(foreign_.waitForGate());
    stop.request_stop();
    EXPECT_EQ(QCoro::waitFor(running).code(), HttpError::Code::Cancelled);
}

/// An exchange for which the addresses that the test names are the public ones.
class PublicRedirects : public Redirects
{
protected:
    Outcome exchange(HttpRequest made, const QStringList& publicAddresses)
    {
        const ExchangeGround ground{
            .limits = {}, .pool = pool_, .isPublicAddress = [publicAddresses](const QHostAddress& address) {
                return publicAddresses.contains(address.toString());
            }};
        Exchange exchange(std::move(made), makeMemoryBody(1024), ground);
        exchange.start();
        return QCoro::waitFor(outcomeOf(answerOf(exchange.answer())));
    }

    static QCoro::Task<HttpResponse> answerOf(QFuture<HttpResponse> answer)
    {
        HttpResponse response = co_await answer;
        co_return response;
    }

    ConnectionPool pool_{nullptr};
};

TEST_F(PublicRedirects, aPublicAddressDoesNotLeadToAPrivateOne)
{
    home_.play(redirectTo(foreign_.url(u"/x"_s).toEncoded()));
    foreign_.play({send(answer("200 OK", "", "here"))});
    EXPECT_EQ(exchange(request(), {u"127.0.0.1"_s}).code(), HttpError::Code::RefusedRedirect);
    EXPECT_EQ(foreign_.connections(), 0);
}

TEST_F(PublicRedirects, aPublicAddressLeadsToAPublicOneAndAPrivateOneAnywhere)
{
    home_.play(redirectTo(foreign_.url(u"/x"_s).toEncoded()));
    foreign_.play({send(answer("200 OK", "", "here"))});
    EXPECT_EQ(exchange(request(), {u"127.0.0.1"_s, u"127.0.0.2"_s}).response.body, "here");
    EXPECT_EQ(exchange(request(), {u"127.0.0.2"_s}).response.body, "here");
    EXPECT_EQ(exchange(request(), {}).response.body, "here");
}

TEST_F(PublicRedirects, aNameThatResolvesToAPrivateAddressIsRefusedLikeIt)
{
    QUrl named = home_.url(u"/x"_s);
    named.setHost(u"localhost"_s);
    foreign_.play(redirectTo(named.toEncoded()));
    EXPECT_EQ(exchange(requestFor(foreign_.url()), {u"127.0.0.2"_s}).code(), HttpError::Code::RefusedRedirect);
    EXPECT_EQ(home_.connections(), 0);
}

TEST_F(PublicRedirects, anIdleConnectionToAPrivateAddressIsNoWayAroundTheRule)
{
    foreign_.play({send(answer("200 OK", "", "kept")), nextRequest()});
    EXPECT_EQ(exchange(requestFor(foreign_.url()), {}).response.body, "kept");
    home_.play(redirectTo(foreign_.url(u"/x"_s).toEncoded()));
    EXPECT_EQ(exchange(request(), {u"127.0.0.1"_s}).code(), HttpError::Code::RefusedRedirect);
    EXPECT_EQ(foreign_.requests().size(), 1);
}

TEST_F(PublicRedirects, theFirstAddressOfARequestMayBePrivate)
{
    home_.play({send(answer("200 OK", "", "here"))});
    EXPECT_EQ(exchange(request(), {}).response.body, "here");
}

} // namespace
} // namespace orvane
