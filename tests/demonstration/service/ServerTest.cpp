#include "tests/demonstration/service/StandInFixture.h"

namespace orvane::test {
namespace {

using demo::SeenRequest;
using End = RawAnswer::End;

class Server : public StandIn
{
};

TEST_F(Server, oneConnectionServesManyRequests)
{
    RawConnection connection(port);
    for (int number = 1; number <= 4; ++number) {
        connection.send(requestText("/api/feed/v2?page=" + QByteArray::number(number), bearer()));
        EXPECT_EQ(connection.receive().status(), 200);
    }
    connection.send(requestText("/nothing"));
    EXPECT_EQ(connection.receive().status(), 404);
    EXPECT_TRUE(connection.isQuietAndOpen());
}

TEST_F(Server, requestsSentTogetherAreAnsweredInTheirOrder)
{
    demo::LibraryOptions options = shortLibrary();
    options.assetBytes = 3'000'000;
    service.setLibrary(options);
    RawConnection connection(port);
    connection.send(requestText(audioTarget(0)) + requestText("/mark.svg") + requestText("/nothing"));
    EXPECT_EQ(connection.receive().body.size(), 3'000'000);
    EXPECT_TRUE(connection.receive().body.startsWith("<svg"));
    EXPECT_EQ(connection.receive().status(), 404);
}

TEST_F(Server, aRequestMayComeInPieces)
{
    RawConnection connection(port);
    const QByteArray request = requestText("/mark.svg");
    connection.send(request.first(20));
    EXPECT_EQ(ask(port, "/style.css").status(), 200) << "others are answered meanwhile";
    connection.send(request.sliced(20));
    EXPECT_EQ(connection.receive().status(), 200);
}

TEST_F(Server, closesWhenItIsAskedTo)
{
    RawConnection connection(port);
    connection.send(requestText("/mark.svg", {{"Connection", "close"}}));
    EXPECT_EQ(connection.receive().status(), 200);
    EXPECT_EQ(connection.receive().end, End::closed);
}

TEST_F(Server, aHeadHasTheLengthAndNoBody)
{
    const QByteArray whole = ask(port, "/style.css").body;
    RawConnection connection(port);
    connection.send(requestText("/style.css", {}, "HEAD") + requestText("/mark.svg"));
    const RawAnswer head = connection.receive(false);
    EXPECT_EQ(head.values("Content-Length"), QList<QByteArray>{QByteArray::number(whole.size())});
    EXPECT_TRUE(connection.receive().body.startsWith("<svg"));
}

TEST_F(Server, whatIsNoRequestIsRefused)
{
    for (const QByteArray& rubbish :
         {QByteArray("hello\r\n\r\n"), QByteArray("GET nothing HTTP/1.1\r\n\r\n"),
          QByteArray("POST / HTTP/1.1\r\nContent-Length: -1\r\n\r\n"),
          QByteArray("POST / HTTP/1.1\r\nContent-Length: 99999999999\r\n\r\n"), QByteArray(1'200'000, 'x')}) {
        RawConnection connection(port);
        connection.send(rubbish);
        const RawAnswer answer = connection.receive();
        EXPECT_TRUE(answer.status() == 400 || answer.end == End::reset) << answer.head.constData();
    }
    EXPECT_EQ(ask(port, "/mark.svg").status(), 200);
}

TEST_F(Server, requestsAreRememberedAsTheyCame)
{
    service.clearRequests();
    ask(port, "/nowhere?x=1",
        {{"user-agent", "me"}, {"Accept-Encoding", "identity"}, {"Cookie", "c=d"}, {"Authorization", "Bearer x"}});
    const QList<SeenRequest> seen = service.requests();
    ASSERT_EQ(seen.size(), 1);
    EXPECT_EQ(seen[0].method, "GET");
    EXPECT_EQ(seen[0].target, "/nowhere?x=1");
    EXPECT_EQ(seen[0].host, "127.0.0.1");
    EXPECT_EQ(seen[0].userAgent, "me");
    EXPECT_EQ(seen[0].acceptEncoding, "identity");
    EXPECT_EQ(seen[0].cookie, "c=d");
    EXPECT_EQ(seen[0].authorization, "Bearer x");
    EXPECT_EQ(seen[0].status, 404);
}

TEST_F(Server, answersUnderAnotherHostToo)
{
    EXPECT_EQ(service.elsewhere().port(), port);
    EXPECT_FALSE(mayReceiveCredential(service.endpoints().credentialDomains, service.elsewhere()));
    EXPECT_TRUE(mayReceiveCredential(service.endpoints().credentialDomains, service.endpoints().feed));
    RawConnection connection(port, "127.0.0.2");
    connection.send(requestText("/mark.svg"));
    EXPECT_EQ(connection.receive().status(), 200);
}

TEST_F(Server, listensOnLoopbackAlone)
{
    const Endpoints endpoints = service.endpoints();
    for (const QUrl& address : {endpoints.sunoHome, endpoints.feed, endpoints.cdn, endpoints.productSite})
        EXPECT_TRUE(address.host().startsWith(QStringLiteral("127.0.0."))) << qPrintable(address.toString());
}

TEST_F(Server, manyClientsAreServedAtOnce)
{
    std::vector<std::unique_ptr<RawConnection>> clients;
    for (int number = 0; number < 100; ++number) {
        clients.push_back(std::make_unique<RawConnection>(port));
        clients.back()->send(requestText("/api/feed/v2?page=1", bearer()));
    }
    for (const std::unique_ptr<RawConnection>& client : clients)
        EXPECT_EQ(client->receive().status(), 200);
}

TEST_F(Server, endsWhileAnswersAreUnderWay)
{
    auto brief =
        std::make_unique<demo::StandInService>(demo::LibraryOptions{.tracks = 3, .assetBytes = 10'000'000'000});
    const auto briefPort = static_cast<quint16>(brief->endpoints().sunoHome.port());
    RawConnection large(briefPort);
    large.send(requestText('/' + brief->tracks()[0].id.toLatin1() + ".mp3"));
    EXPECT_EQ(large.receiveBytes(100'000).size(), 100'000);
    RawConnection cover(briefPort);
    cover.send(requestText("/image/" + brief->tracks()[1].id.toLatin1() + ".png"));
    brief.reset();
    EXPECT_NE(cover.receive().end, End::silent);
}

} // namespace
} // namespace orvane::test
