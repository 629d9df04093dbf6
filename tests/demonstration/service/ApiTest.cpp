#include "tests/demonstration/service/StandInFixture.h"

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using demo::LibraryOptions;
using demo::StandInService;
using demo::Track;

class Api : public StandIn
{
};

TEST_F(Api, theFeedEndsWithAnEmptyPage)
{
    QStringList ids;
    for (int number = 1; number <= 4; ++number) {
        for (const QJsonValue clip : page(number))
            ids.append(clip[u"id"_s].toString());
    }
    EXPECT_EQ(ids.size(), 16);
    EXPECT_EQ(QSet<QString>(ids.begin(), ids.end()).size(), 16);
    EXPECT_TRUE(page(5).isEmpty());
    EXPECT_TRUE(page(1'000'000).isEmpty());
}

TEST_F(Api, aProjectHoldsItsPartOfTheLibrary)
{
    const QByteArray project = "&project_id=" + service.projectId(1).toLatin1();
    EXPECT_EQ(page(1, project).size() + page(2, project).size(), 8);
    EXPECT_TRUE(page(3, project).isEmpty());
    EXPECT_TRUE(page(1, "&project_id=none").isEmpty());
}

TEST_F(Api, theFeedTellsWhatTheTracksTrulyAre)
{
    const QList<Track> tracks = service.tracks();
    QList<QJsonValue> clips;
    for (int number = 1; number <= 4; ++number) {
        for (const QJsonValue clip : page(number))
            clips.append(clip);
    }
    ASSERT_EQ(clips.size(), tracks.size());
    for (qsizetype position = 0; position < tracks.size(); ++position) {
        const QJsonValue& clip = clips[position];
        const Track& track = tracks[position];
        EXPECT_EQ(clip[u"id"_s].toString(), track.id);
        EXPECT_EQ(clip[u"title"_s].toString(), track.title) << position;
        EXPECT_EQ(clip[u"title"_s].isNull(), track.isUntitled);
        EXPECT_EQ(clip[u"audio_url"_s].isUndefined(), !track.hasAudioAddress);
        EXPECT_TRUE(clip[u"image_large_url"_s].toString().endsWith(track.id + u'.' + track.artworkExtension));
        EXPECT_EQ(clip[u"metadata"_s][u"duration"_s].toDouble(), track.song.seconds);
        EXPECT_EQ(clip[u"metadata"_s][u"tags"_s].toString(), track.tags);
        const QJsonValue inside = clip[u"metadata"_s][u"prompt"_s];
        EXPECT_EQ((inside.isUndefined() ? clip[u"prompt"_s] : inside).toString(),
                  service.lyricsOf(static_cast<int>(position)));
        EXPECT_EQ(service.lyricsOf(static_cast<int>(position)).isEmpty(), !track.hasLyrics);
    }
    EXPECT_TRUE(clips[7][u"metadata"_s][u"prompt"_s].isUndefined()) << "some keep the words on the top level";
}

TEST_F(Api, theFirstTracksAreTheTellingOnes)
{
    const QList<Track> tracks = service.tracks();
    EXPECT_TRUE(service.lyricsOf(0).contains(u"[Verse]"_s) && service.lyricsOf(0).contains(u"[Chorus]"_s));
    EXPECT_FALSE(tracks[1].hasAudioAddress);
    EXPECT_FALSE(tracks[2].hasLyrics);
    EXPECT_TRUE(tracks[3].isUntitled);
    EXPECT_EQ(tracks[4].title, tracks[5].title);
    EXPECT_EQ(tracks[6].title, u"../../etc/passwd"_s);
    EXPECT_TRUE(tracks[7].title.contains(QChar(1)));
    EXPECT_TRUE(tracks[8].title.contains(QChar(0x202E)));
    EXPECT_EQ(tracks[10].title.size(), 300);
    EXPECT_EQ(tracks[11].title, u"CON"_s);
    EXPECT_EQ(tracks[13].title, u"..."_s);
    EXPECT_TRUE(tracks[14].title.contains(QChar(0xD83D)));
}

TEST_F(Api, theTellingTracksCanBeLeftOut)
{
    LibraryOptions options = shortLibrary();
    options.plainOnly = true;
    service.setLibrary(options);
    for (const Track& track : service.tracks()) {
        EXPECT_TRUE(track.title.size() > 5 && track.title.at(0).isUpper()) << qPrintable(track.title);
        EXPECT_TRUE(track.hasLyrics && track.hasAudioAddress && !track.isUntitled);
    }
}

TEST_F(Api, asksForACredentialThatIsGood)
{
    const QByteArray target = "/api/feed/v2?page=1";
    const QByteArray token = service.currentToken().toLatin1();
    for (const QByteArray& path : {target, QByteArray("/api/project/me"), QByteArray("/api/nothing")})
        EXPECT_EQ(ask(port, path).status(), 401);
    EXPECT_EQ(ask(port, target, {{"Authorization", "Bearer rubbish"}}).status(), 401);
    EXPECT_EQ(ask(port, target, {{"Authorization", token}}).status(), 401) << "without the word before it";
    EXPECT_EQ(ask(port, target, {{"Authorization", "Bearer " + token}}).status(), 200);
    EXPECT_EQ(ask(port, target, {{"Cookie", "a=b; __session=" + token}}).status(), 200);
    EXPECT_EQ(ask(port, target, {{"Cookie", "__session=rubbish"}}).status(), 401);
    EXPECT_EQ(ask(port, target, {{"Cookie", "__client=rubbish.rubbish"}}).status(), 401);
    service.setTokenRequired(false);
    EXPECT_EQ(ask(port, target).status(), 200);
}

TEST_F(Api, expiredTokensAreRefusedAndTheNextIsGood)
{
    const RawHeaders old = bearer();
    service.expireTokens();
    EXPECT_EQ(ask(port, "/api/feed/v2?page=1", old).status(), 401);
    EXPECT_EQ(ask(port, "/api/feed/v2?page=1", bearer()).status(), 200);
}

TEST_F(Api, theProjectsComeInEveryForm)
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
        LibraryOptions options = shortLibrary();
        options.projectForm = form;
        service.setLibrary(options);
        const QByteArray body = ask(port, "/api/project/me", bearer()).body;
        EXPECT_TRUE(body.startsWith(start)) << body.constData();
        EXPECT_TRUE(body.contains(service.projectId(0).toLatin1()));
        EXPECT_FALSE(QJsonDocument::fromJson(body).isNull());
    }
}

TEST_F(Api, everyProjectAddressTellsTheSame)
{
    const QByteArray body = ask(port, "/api/project/me", bearer()).body;
    EXPECT_EQ(ask(port, "/api/project/", bearer()).body, body);
    EXPECT_EQ(ask(port, "/api/projects", bearer()).body, body);
    EXPECT_EQ(ask(port, "/api/other", bearer()).status(), 404);
}

TEST_F(Api, aLibraryWithoutProjectsSaysSo)
{
    LibraryOptions options = shortLibrary();
    options.projects = 0;
    service.setLibrary(options);
    EXPECT_EQ(ask(port, "/api/project/me", bearer()).body, "[]");
    EXPECT_TRUE(page(1, "&project_id=any").isEmpty());
}

TEST_F(Api, newTracksStandAtTheHeadAndTheOldKeepTheirNames)
{
    const QList<Track> before = service.tracks();
    service.addTracks(3);
    const QList<Track> after = service.tracks();
    ASSERT_EQ(after.size(), before.size() + 3);
    EXPECT_EQ(after[3].id, before[0].id);
    EXPECT_EQ(after[3].title, before[0].title);
    EXPECT_EQ(after.last().id, before.last().id);
    EXPECT_EQ(page(1)[0][u"id"_s].toString(), after[0].id);
    EXPECT_EQ(ask(port, audioTarget(0)).status(), 200);
    service.addTracks(1);
    EXPECT_EQ(service.tracks()[1].id, after[0].id);
}

TEST_F(Api, theSameSeedGivesTheSameLibraryByteForByte)
{
    const StandInService other(shortLibrary());
    const Track track = service.tracks().first();
    EXPECT_EQ(other.tracks().first().id, track.id);
    EXPECT_EQ(other.lyricsOf(0), service.lyricsOf(0));
    EXPECT_EQ(other.audioOf(track.id), service.audioOf(track.id));
    EXPECT_EQ(other.artworkOf(track.id), service.artworkOf(track.id));
    EXPECT_GT(service.audioOf(track.id).size(), 20'000);
    LibraryOptions options = shortLibrary();
    options.seed = 2;
    const StandInService different(options);
    EXPECT_NE(different.tracks().first().id, track.id);
    EXPECT_NE(different.tracks().first().title, track.title);
}

TEST_F(Api, aVastLibraryIsToldWithoutHoldingIt)
{
    LibraryOptions options = shortLibrary();
    options.tracks = 50'000;
    options.pageSize = 50;
    options.lyricsBytes = 1500;
    service.setLibrary(options);
    const QJsonArray last = page(1000);
    ASSERT_EQ(last.size(), 50);
    EXPECT_EQ(last[48][u"metadata"_s][u"prompt"_s].toString().toUtf8().size(), 1500);
    EXPECT_TRUE(page(1001).isEmpty());
    const QByteArray target = '/' + last[49][u"id"_s].toString().toLatin1() + ".mp3";
    EXPECT_EQ(ask(port, target).status(), 200);
}

} // namespace
} // namespace orvane::test
