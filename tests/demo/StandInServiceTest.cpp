#include "demo/service/StandInService.h"

#include "tests/demo/RawClient.h"

#include <QBuffer>
#include <QImageReader>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;
using demo::Fault;
using demo::LibraryOptions;
using demo::StandInService;
using demo::Track;
using test::ask;
using test::RawAnswer;

const LibraryOptions shortLibrary{.tracks = 16, .pageSize = 5, .shortestSeconds = 1, .longestSeconds = 2};

class StandIn : public testing::Test
{
protected:
    StandInService service{shortLibrary};
    const quint16 port = static_cast<quint16>(service.endpoints().sunoHome.port());

    QList<std::pair<QByteArray, QByteArray>> bearer() const
    {
        return {{"Authorization", "Bearer " + service.currentToken().toLatin1()}};
    }

    QJsonArray page(int number, const QByteArray& more = {}) const
    {
        const RawAnswer answer = ask(port, "/api/feed/v2?page=" + QByteArray::number(number) + more, bearer());
        EXPECT_EQ(answer.status(), 200);
        return QJsonDocument::fromJson(answer.body).object()[u"clips"_s].toArray();
    }

    RawAnswer faulty(Fault::Kind kind)
    {
        service.script({.kind = kind, .where = u"feed"_s});
        return ask(port, "/api/feed/v2?page=1", bearer());
    }

    QByteArray wholePage() const { return ask(port, "/api/feed/v2?page=1", bearer()).body; }
};

TEST_F(StandIn, theFeedEndsWithAnEmptyPage)
{
    QStringList ids;
    for (int number = 1; number <= 4; ++number) {
        for (const QJsonValue clip : page(number))
            ids.append(clip[u"id"_s].toString());
    }
    EXPECT_EQ(ids.size(), 16);
    EXPECT_EQ(QSet<QString>(ids.begin(), ids.end()).size(), 16);
    EXPECT_TRUE(page(5).isEmpty());
}

TEST_F(StandIn, aProjectHoldsItsPartOfTheLibrary)
{
    const QByteArray project = "&project_id=" + service.projectId(1).toLatin1();
    EXPECT_EQ(page(1, project).size() + page(2, project).size(), 8);
    EXPECT_TRUE(page(3, project).isEmpty());
}

TEST_F(StandIn, theFeedTellsWhatTheTracksTrulyAre)
{
    const QList<Track> tracks = service.tracks();
    const QJsonArray clips = page(1);
    EXPECT_EQ(clips[0][u"title"_s].toString(), tracks[0].title);
    EXPECT_EQ(clips[0][u"metadata"_s][u"prompt"_s].toString(), service.lyricsOf(0));
    EXPECT_TRUE(service.lyricsOf(0).contains(u"[Chorus]"_s));
    EXPECT_FALSE(clips[1].toObject().contains(u"audio_url"_s));
    EXPECT_EQ(clips[2][u"metadata"_s][u"prompt"_s].toString(), QString());
    EXPECT_TRUE(clips[3][u"title"_s].isNull());
    EXPECT_EQ(tracks[4].title, tracks[5].title);
}

TEST_F(StandIn, theApiAsksForATokenThatIsGood)
{
    EXPECT_EQ(ask(port, "/api/feed/v2?page=1").status(), 401);
    EXPECT_EQ(ask(port, "/api/feed/v2?page=1", {{"Authorization", "Bearer rubbish"}}).status(), 401);
    EXPECT_EQ(ask(port, "/api/feed/v2?page=1", bearer()).status(), 200);
    const QByteArray cookie = "a=b; __session=" + service.currentToken().toLatin1();
    EXPECT_EQ(ask(port, "/api/feed/v2?page=1", {{"Cookie", cookie}}).status(), 200);
    service.setTokenRequired(false);
    EXPECT_EQ(ask(port, "/api/feed/v2?page=1").status(), 200);
}

TEST_F(StandIn, expiredTokensAreRefusedAndTheNextIsGood)
{
    const auto old = bearer();
    service.expireTokens();
    EXPECT_EQ(ask(port, "/api/feed/v2?page=1", old).status(), 401);
    EXPECT_EQ(ask(port, "/api/feed/v2?page=1", bearer()).status(), 200);
}

TEST_F(StandIn, tokensRotateWithTheirLifetime)
{
    service.setTokenLifetime(std::chrono::milliseconds(1));
    const QString first = service.currentToken();
    while (service.currentToken() == first) {
    }
    EXPECT_NE(service.currentToken(), first);
}

TEST_F(StandIn, theSiteGivesATokenToWhomIsSignedIn)
{
    EXPECT_EQ(ask(port, "/token").status(), 401);
    const RawAnswer signedIn = ask(port, "/sign-in", {{"Content-Length", "0"}}, "POST");
    EXPECT_EQ(signedIn.status(), 204);
    const QByteArray cookie = signedIn.values("Set-Cookie").value(0).split(';').first();
    const RawAnswer token = ask(port, "/token", {{"Cookie", cookie}});
    EXPECT_EQ(token.status(), 200);
    EXPECT_EQ(ask(port, "/api/feed/v2?page=1", {{"Authorization", "Bearer " + token.body}}).status(), 200);
    EXPECT_TRUE(ask(port, "/").body.contains("id=\"sign-in\""));
    EXPECT_TRUE(ask(port, "/", {{"Cookie", cookie}}).body.contains("id=\"sign-out\""));
    EXPECT_TRUE(
        ask(port, "/sign-out", {{"Content-Length", "0"}}, "POST").values("Set-Cookie")[0].contains("Max-Age=0"));
}

TEST_F(StandIn, titlesOnTheSiteCannotBecomeMarkup)
{
    const RawAnswer home = ask(port, "/", {{"Cookie", "stand_in_signed_in=yes"}});
    EXPECT_FALSE(home.body.contains("<b>bold</b>"));
    EXPECT_TRUE(home.body.contains("&lt;b&gt;bold&lt;/b&gt;"));
}

TEST_F(StandIn, theProjectsComeInEveryForm)
{
    using Form = demo::ProjectForm;
    const QList<QPair<Form, QByteArray>> starts{{Form::list, "[{"},
                                                {Form::wrappedInProjects, R"({"projects":[)"},
                                                {Form::wrappedInProject, R"({"project":{)"},
                                                {Form::wrappedInData, R"({"data":[)"},
                                                {Form::wrappedInResults, R"({"results":[)"},
                                                {Form::wrappedInItems, R"({"items":[)"},
                                                {Form::nested, R"({"data":{"results":{"items":[)"},
                                                {Form::single, R"({"id":)"}};
    for (const auto& [form, start] : starts) {
        LibraryOptions options = shortLibrary;
        options.projectForm = form;
        service.setLibrary(options);
        const QByteArray body = ask(port, "/api/project/me", bearer()).body;
        EXPECT_TRUE(body.startsWith(start)) << body.constData();
        EXPECT_TRUE(body.contains(service.projectId(0).toLatin1()));
    }
}

TEST_F(StandIn, theSameSeedGivesTheSameLibraryByteForByte)
{
    const StandInService other(shortLibrary);
    const Track track = service.tracks().first();
    EXPECT_EQ(other.tracks().first().id, track.id);
    EXPECT_EQ(other.audioOf(track.id), service.audioOf(track.id));
    EXPECT_EQ(other.artworkOf(track.id), service.artworkOf(track.id));
    EXPECT_GT(service.audioOf(track.id).size(), 20'000);
}

TEST_F(StandIn, newTracksStandAtTheHeadAndTheOldKeepTheirNames)
{
    const QList<Track> before = service.tracks();
    service.addTracks(3);
    const QList<Track> after = service.tracks();
    ASSERT_EQ(after.size(), before.size() + 3);
    EXPECT_EQ(after[3].id, before[0].id);
    EXPECT_EQ(after.last().id, before.last().id);
    EXPECT_EQ(ask(port, '/' + after[0].id.toLatin1() + ".mp3").status(), 200);
}

TEST_F(StandIn, recordingsDecodeInAnotherProgramToTheirLength)
{
    const Track track = service.tracks()[1];
    const RawAnswer answer = ask(port, '/' + track.id.toLatin1() + ".mp3");
    QProcess mpg123;
    mpg123.start(u"mpg123"_s, {u"-q"_s, u"-s"_s, u"-"_s});
    mpg123.write(answer.body);
    mpg123.closeWriteChannel();
    ASSERT_TRUE(mpg123.waitForFinished());
    EXPECT_EQ(mpg123.exitCode(), 0) << mpg123.readAllStandardError().constData();
    EXPECT_NEAR(mpg123.readAllStandardOutput().size() / 4.0 / demo::sampleRate, track.song.seconds, 0.001);
}

TEST_F(StandIn, coversArePicturesOfTheirKind)
{
    for (const Track& track : service.tracks().first(3)) {
        QByteArray bytes = ask(port, "/image/" + track.id.toLatin1() + '.' + track.artworkExtension.toLatin1()).body;
        QBuffer buffer(&bytes);
        QImageReader reader(&buffer);
        EXPECT_EQ(reader.format(), track.artworkExtension == u"jpg" ? "jpeg" : track.artworkExtension.toLatin1());
        EXPECT_EQ(reader.size(), QSize(1024, 1024));
        EXPECT_FALSE(reader.read().isNull());
    }
}

TEST_F(StandIn, aLargeAssetIsStreamedToItsLastByte)
{
    LibraryOptions options = shortLibrary;
    options.assetBytes = 20'000'001;
    service.setLibrary(options);
    const RawAnswer answer = ask(port, '/' + service.tracks()[0].id.toLatin1() + ".mp3");
    EXPECT_EQ(answer.values("Content-Length"), QList<QByteArray>{"20000001"});
    EXPECT_EQ(answer.body.size(), 20'000'001);
}

TEST_F(StandIn, requestsAreRememberedAsTheyCame)
{
    service.clearRequests();
    ask(port, "/nowhere?x=1", {{"User-Agent", "me"}, {"Accept-Encoding", "identity"}, {"Cookie", "c=d"}});
    const QList<demo::SeenRequest> seen = service.requests();
    ASSERT_EQ(seen.size(), 1);
    EXPECT_EQ(seen[0].target, "/nowhere?x=1");
    EXPECT_EQ(seen[0].userAgent, "me");
    EXPECT_EQ(seen[0].acceptEncoding, "identity");
    EXPECT_EQ(seen[0].cookie, "c=d");
    EXPECT_EQ(seen[0].status, 404);
}

TEST_F(StandIn, aFaultServesItsRequestsAndNoOthers)
{
    service.script(
        {.kind = Fault::Kind::status, .where = u"feed"_s, .times = 2, .after = 1, .status = 429, .retryAfter = "120"});
    EXPECT_EQ(ask(port, "/api/project/me", bearer()).status(), 200);
    EXPECT_EQ(ask(port, "/api/feed/v2?page=1", bearer()).status(), 200);
    const RawAnswer limited = ask(port, "/api/feed/v2?page=1", bearer());
    EXPECT_EQ(limited.status(), 429);
    EXPECT_EQ(limited.values("Retry-After"), QList<QByteArray>{"120"});
    EXPECT_EQ(ask(port, "/api/feed/v2?page=1", bearer()).status(), 429);
    EXPECT_EQ(ask(port, "/api/feed/v2?page=1", bearer()).status(), 200);
    service.script({.where = u"feed"_s});
    service.clearFaults();
    EXPECT_EQ(ask(port, "/api/feed/v2?page=1", bearer()).status(), 200);
}

TEST_F(StandIn, bodiesBreakOffWhereTheyShould)
{
    const qsizetype whole = wholePage().size();
    const RawAnswer reset = faulty(Fault::Kind::resetInBody);
    EXPECT_EQ(reset.values("Content-Length"), QList<QByteArray>{QByteArray::number(whole)});
    EXPECT_LT(reset.body.size(), whole);
    EXPECT_TRUE(reset.wasClosed);
    const RawAnswer chunked = faulty(Fault::Kind::chunkedCut);
    EXPECT_FALSE(chunked.body.endsWith("0\r\n\r\n"));
    EXPECT_TRUE(chunked.wasClosed);
    const RawAnswer closed = faulty(Fault::Kind::closeBeforeAnswer);
    EXPECT_EQ(closed.head, QByteArray());
    EXPECT_TRUE(closed.wasClosed);
}

TEST_F(StandIn, lengthsLieAsTheyShould)
{
    const qint64 whole = wholePage().size();
    const auto stated = [this](Fault::Kind kind) { return faulty(kind).values("Content-Length"); };
    EXPECT_EQ(stated(Fault::Kind::contentLengthTooLarge), QList<QByteArray>{QByteArray::number(whole + 1000)});
    EXPECT_EQ(stated(Fault::Kind::contentLengthTooSmall), QList<QByteArray>{QByteArray::number(whole - 10)});
    EXPECT_EQ(stated(Fault::Kind::contentLengthNegative), QList<QByteArray>{"-5"});
    EXPECT_EQ(stated(Fault::Kind::contentLengthAbsurd), QList<QByteArray>{"9223372036854775807999"});
    EXPECT_EQ(stated(Fault::Kind::contentLengthTwice).size(), 2);
    EXPECT_EQ(stated(Fault::Kind::emptyBody), QList<QByteArray>{"0"});
}

TEST_F(StandIn, otherAnswersAreWhatTheirNamesSay)
{
    EXPECT_TRUE(faulty(Fault::Kind::chunked).body.endsWith("0\r\n\r\n"));
    EXPECT_TRUE(faulty(Fault::Kind::chunkedBadSize).body.startsWith("ZZ\r\n"));
    EXPECT_TRUE(faulty(Fault::Kind::notHttp).head.startsWith("SSH-2.0"));
    EXPECT_TRUE(faulty(Fault::Kind::html).body.startsWith("<!doctype html>"));
    EXPECT_TRUE(QJsonDocument::fromJson(faulty(Fault::Kind::badJson).body).isNull());
    service.script({.kind = Fault::Kind::redirect, .location = "http://127.0.0.2/x"});
    EXPECT_EQ(ask(port, "/").values("Location"), QList<QByteArray>{"http://127.0.0.2/x"});
    EXPECT_EQ(faulty(Fault::Kind::redirectLoop).values("Location"), QList<QByteArray>{"/api/feed/v2?page=1"});
    service.script({.kind = Fault::Kind::samePageForEver, .where = u"feed"_s});
    const QJsonArray third = page(3);
    EXPECT_EQ(third, page(1));
}

TEST_F(StandIn, packedBodiesArePackedAsTheyShould)
{
    const QByteArray whole = wholePage();
    for (const Fault::Kind kind : {Fault::Kind::gzipCut, Fault::Kind::gzipBadChecksum, Fault::Kind::gzipBomb}) {
        const RawAnswer packed = faulty(kind);
        EXPECT_EQ(packed.values("Content-Encoding"), QList<QByteArray>{"gzip"});
        QProcess gunzip;
        gunzip.start(u"gzip"_s, {u"-t"_s});
        gunzip.write(packed.body);
        gunzip.closeWriteChannel();
        gunzip.waitForFinished();
        EXPECT_EQ(gunzip.exitCode() == 0, kind == Fault::Kind::gzipBomb);
    }
    EXPECT_EQ(faulty(Fault::Kind::gzip).body, whole) << "only for those who accept it";
}

} // namespace
} // namespace orvane
