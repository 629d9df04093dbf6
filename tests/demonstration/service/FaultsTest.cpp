#include "tests/demonstration/service/StandInFixture.h"

#include <QProcess>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using demo::Fault;
using demo::SeenRequest;
using End = RawAnswer::End;

/// What is really on the wire, seen from a bare socket.
class Faults : public StandIn
{
protected:
    RawAnswer faulty(Fault::Kind kind, const RawHeaders& more = {})
    {
        service.script({.kind = kind, .where = u"feed"_s});
        return ask(port, "/api/feed/v2?page=1", bearer() + more);
    }

    QByteArray wholePage() const { return askPage(1).body; }

    static bool unpacks(const QByteArray& bytes)
    {
        QProcess gzip;
        gzip.start(u"gzip"_s, {u"-t"_s});
        gzip.write(bytes);
        gzip.closeWriteChannel();
        EXPECT_TRUE(gzip.waitForFinished());
        return gzip.exitCode() == 0;
    }

    static QByteArray unpacked(const QByteArray& bytes)
    {
        QProcess gzip;
        gzip.start(u"gzip"_s, {u"-dc"_s});
        gzip.write(bytes);
        gzip.closeWriteChannel();
        EXPECT_TRUE(gzip.waitForFinished());
        return gzip.readAllStandardOutput();
    }
};

TEST_F(Faults, aFaultServesItsRequestsAndNoOthers)
{
    service.script(
        {.kind = Fault::Kind::status, .where = u"feed"_s, .times = 2, .after = 1, .status = 429, .retryAfter = "120"});
    EXPECT_EQ(ask(port, "/api/project/me", bearer()).status(), 200);
    EXPECT_EQ(askPage(1).status(), 200);
    const RawAnswer limited = askPage(1);
    EXPECT_EQ(limited.status(), 429);
    EXPECT_EQ(limited.values("Retry-After"), QList<QByteArray>{"120"});
    EXPECT_EQ(askPage(1).status(), 429);
    EXPECT_EQ(askPage(1).status(), 200);
}

TEST_F(Faults, areForgottenOnRequest)
{
    service.script({.where = u"feed"_s});
    service.clearFaults();
    EXPECT_EQ(askPage(1).status(), 200);
}

TEST_F(Faults, aStatusMayComeWithoutATimeToWait)
{
    const RawAnswer answer = faulty(Fault::Kind::status);
    EXPECT_EQ(answer.status(), 500);
    EXPECT_EQ(answer.values("Retry-After"), QList<QByteArray>());
}

TEST_F(Faults, aResetInTheBodyIsAReset)
{
    const qsizetype whole = wholePage().size();
    const RawAnswer answer = faulty(Fault::Kind::resetInBody);
    EXPECT_EQ(answer.end, End::reset);
    EXPECT_EQ(answer.values("Content-Length"), QList<QByteArray>{QByteArray::number(whole)});
    EXPECT_EQ(answer.body.size(), whole / 2);
}

TEST_F(Faults, aLargeBodyIsResetInItsMiddleToo)
{
    demo::LibraryOptions options = shortLibrary();
    options.assetBytes = 8'000'000;
    service.setLibrary(options);
    service.script({.kind = Fault::Kind::resetInBody});
    const RawAnswer answer = ask(port, audioTarget(0));
    EXPECT_EQ(answer.end, End::reset);
    EXPECT_LE(answer.body.size(), 4'000'000);
    EXPECT_GT(answer.body.size(), 0);
}

TEST_F(Faults, aCloseBeforeTheAnswerBringsNothing)
{
    const RawAnswer answer = faulty(Fault::Kind::closeBeforeAnswer);
    EXPECT_EQ(answer.head, "");
    EXPECT_EQ(answer.end, End::closed);
}

TEST_F(Faults, silenceSaysNothingAndKeepsTheConnection)
{
    service.script({.kind = Fault::Kind::silence, .where = u"feed"_s});
    RawConnection silent(port);
    silent.send(requestText("/api/feed/v2?page=1", bearer()));
    EXPECT_EQ(seenAfter(1).first().status, 0);
    EXPECT_EQ(askPage(1).status(), 200) << "others are answered";
    EXPECT_TRUE(silent.isQuietAndOpen());
}

TEST_F(Faults, aDribbleComesByteByByteToItsEnd)
{
    service.script({.kind = Fault::Kind::dribble, .where = u"project/me"_s, .pace = 1ms});
    const RawAnswer answer = ask(port, "/api/project/me", bearer());
    EXPECT_EQ(answer.body, ask(port, "/api/project/me", bearer()).body);
    EXPECT_EQ(answer.end, End::whole);
}

TEST_F(Faults, aDribbleWaitsBeforeEachByte)
{
    service.script({.kind = Fault::Kind::dribble, .where = u"feed"_s, .pace = 1h});
    RawConnection slow(port);
    slow.send(requestText("/api/feed/v2?page=1", bearer()));
    EXPECT_EQ(slow.receive(false).status(), 200);
    EXPECT_EQ(askPage(1).status(), 200);
    EXPECT_TRUE(slow.isQuietAndOpen());
}

TEST_F(Faults, lengthsLieAsTheyShould)
{
    const QByteArray whole = wholePage();
    const auto expectLength = [&](Fault::Kind kind, const QList<QByteArray>& stated) {
        const RawAnswer answer = faulty(kind);
        EXPECT_EQ(answer.values("Content-Length"), stated);
        return answer;
    };
    const QByteArray size = QByteArray::number(whole.size());
    const RawAnswer tooLarge =
        expectLength(Fault::Kind::contentLengthTooLarge, {QByteArray::number(whole.size() + 1000)});
    EXPECT_EQ(tooLarge.body, whole);
    EXPECT_EQ(tooLarge.end, End::closed);
    EXPECT_EQ(expectLength(Fault::Kind::contentLengthNegative, {"-5"}).body, whole);
    EXPECT_EQ(expectLength(Fault::Kind::contentLengthAbsurd, {"9223372036854775807999"}).body, whole);
    EXPECT_EQ(expectLength(Fault::Kind::contentLengthTwice, {size, QByteArray::number(whole.size() / 2)}).body, whole);
}

TEST_F(Faults, moreMayComeThanWasStated)
{
    const QByteArray whole = wholePage();
    service.script({.kind = Fault::Kind::contentLengthTooSmall, .where = u"feed"_s});
    RawConnection connection(port);
    connection.send(requestText("/api/feed/v2?page=1", bearer()));
    const RawAnswer answer = connection.receive();
    EXPECT_EQ(answer.values("Content-Length"), QList<QByteArray>{QByteArray::number(whole.size() - 10)});
    EXPECT_EQ(answer.body + connection.receiveBytes(1000), whole);
}

TEST_F(Faults, anEmptyBodyIsASuccess)
{
    const RawAnswer answer = faulty(Fault::Kind::emptyBody);
    EXPECT_EQ(answer.status(), 200);
    EXPECT_EQ(answer.values("Content-Length"), QList<QByteArray>{"0"});
}

TEST_F(Faults, chunksAddUpToTheBody)
{
    const QByteArray whole = wholePage();
    const RawAnswer answer = faulty(Fault::Kind::chunked);
    EXPECT_EQ(answer.values("Content-Length"), QList<QByteArray>());
    QByteArray joined;
    for (qsizetype at = 0;;) {
        const qsizetype line = answer.body.indexOf("\r\n", at);
        const qsizetype size = answer.body.mid(at, line - at).toLongLong(nullptr, 16);
        if (size == 0)
            break;
        joined += answer.body.mid(line + 2, size);
        at = line + 2 + size + 2;
    }
    EXPECT_EQ(joined, whole);
    EXPECT_EQ(answer.end, End::whole);
}

TEST_F(Faults, chunksMayBeCutOrBad)
{
    const RawAnswer cut = faulty(Fault::Kind::chunkedCut);
    EXPECT_FALSE(cut.body.isEmpty() || cut.body.endsWith("0\r\n\r\n"));
    EXPECT_EQ(cut.end, End::closed);
    EXPECT_TRUE(faulty(Fault::Kind::chunkedBadSize).body.startsWith("ZZ\r\n"));
}

TEST_F(Faults, packsOnlyForWhomAcceptsIt)
{
    const QByteArray whole = wholePage();
    EXPECT_EQ(faulty(Fault::Kind::gzip).body, whole);
    const RawAnswer packed = faulty(Fault::Kind::gzip, {{"Accept-Encoding", "gzip, deflate"}});
    EXPECT_EQ(packed.values("Content-Encoding"), QList<QByteArray>{"gzip"});
    EXPECT_LT(packed.body.size(), whole.size());
    EXPECT_EQ(unpacked(packed.body), whole);
}

TEST_F(Faults, packedBodiesMayBeCutOrBad)
{
    for (const Fault::Kind kind : {Fault::Kind::gzipCut, Fault::Kind::gzipBadChecksum}) {
        const RawAnswer packed = faulty(kind);
        EXPECT_EQ(packed.values("Content-Encoding"), QList<QByteArray>{"gzip"});
        EXPECT_EQ(packed.end, End::whole);
        EXPECT_FALSE(unpacks(packed.body));
    }
}

TEST_F(Faults, aBombIsSmallUntilItIsUnpacked)
{
    const RawAnswer bomb = faulty(Fault::Kind::gzipBomb);
    EXPECT_EQ(bomb.values("Content-Encoding"), QList<QByteArray>{"gzip"});
    EXPECT_LT(bomb.body.size(), 4'000'000);
    EXPECT_TRUE(unpacks(bomb.body));
}

TEST_F(Faults, somethingElseThanHttpMayAnswer)
{
    const RawAnswer answer = faulty(Fault::Kind::notHttp);
    EXPECT_TRUE(answer.head.startsWith("SSH-2.0"));
    EXPECT_EQ(answer.status(), 0);
}

TEST_F(Faults, aRedirectNamesItsTarget)
{
    service.script({.kind = Fault::Kind::redirect, .location = "file:///etc/hostname"});
    const RawAnswer answer = ask(port, "/");
    EXPECT_EQ(answer.status(), 302);
    EXPECT_EQ(answer.values("Location"), QList<QByteArray>{"file:///etc/hostname"});
}

TEST_F(Faults, aLoopLeadsToItselfForEver)
{
    service.script({.kind = Fault::Kind::redirectLoop, .where = u"feed"_s});
    for (int round = 0; round < 30; ++round)
        EXPECT_EQ(askPage(1).values("Location"), QList<QByteArray>{"/api/feed/v2?page=1"});
    service.clearFaults();
    EXPECT_EQ(askPage(1).status(), 200);
}

TEST_F(Faults, theSamePageComesForEver)
{
    const QJsonArray first = page(1);
    service.script({.kind = Fault::Kind::samePageForEver, .where = u"feed"_s});
    for (int number = 2; number < 30; ++number)
        EXPECT_EQ(page(number), first);
}

TEST_F(Faults, aPageOrHalfAnAnswerMayComeAsASuccess)
{
    const RawAnswer html = faulty(Fault::Kind::html);
    EXPECT_EQ(html.status(), 200);
    EXPECT_TRUE(html.body.startsWith("<!doctype html>"));
    const RawAnswer json = faulty(Fault::Kind::badJson);
    EXPECT_EQ(json.values("Content-Type"), QList<QByteArray>{"application/json"});
    EXPECT_TRUE(QJsonDocument::fromJson(json.body).isNull());
}

TEST_F(Faults, meetAssetsAsWell)
{
    service.script({.kind = Fault::Kind::html, .where = u".mp3"_s});
    EXPECT_TRUE(ask(port, audioTarget(0)).body.startsWith("<!doctype html>"));
    service.script({.kind = Fault::Kind::contentLengthTooLarge, .where = u".mp3"_s});
    const RawAnswer answer = ask(port, audioTarget(0));
    EXPECT_EQ(answer.end, End::closed);
    EXPECT_EQ(answer.body, service.audioOf(service.tracks()[0].id));
}

} // namespace
} // namespace orvane::test
