#include "main/App/Session.h"

#include "main/App/Preferences.h"
#include "tests/support/TestFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QSignalSpy>

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString key = u"destinationPath"_s;

struct SessionTest : testing::Test
{
    TestFolder folder;
    Preferences preferences{folder.path(u"preferences.json"_s)};

    QUrl destinationFor(const QString& stored)
    {
        preferences.set(key, stored);
        return Session(preferences).destination();
    }
};

TEST_F(SessionTest, startsWithNothingUnderWay)
{
    const Session session(preferences);
    EXPECT_FALSE(session.downloadInProgress);
    EXPECT_FALSE(session.automationInProgress);
    EXPECT_TRUE(session.token().isEmpty());
    EXPECT_EQ(session.openSunoURL, std::nullopt);
    EXPECT_EQ(session.selection(), std::nullopt);
}

TEST_F(SessionTest, startsInTheDefaultFolderWithoutMakingIt)
{
    const Session session(preferences);
    EXPECT_EQ(session.destination(), Session::defaultDestination());
    EXPECT_EQ(session.destination(), QUrl::fromLocalFile(QDir::homePath() + u"/Downloads/Orvane"_s));
    EXPECT_FALSE(QFileInfo::exists(session.destination().toLocalFile()));
    EXPECT_FALSE(preferences.contains(key));
}

TEST_F(SessionTest, startsInTheStoredFolderAndMakesIt)
{
    const QString stored = folder.path(u"one/two"_s);
    EXPECT_EQ(destinationFor(stored), QUrl::fromLocalFile(stored));
    EXPECT_TRUE(QFileInfo(stored).isDir());
}

TEST_F(SessionTest, fallsBackToTheDefaultWhereTheStoredFolderCannotBeMade)
{
    folder.write(u"file"_s, "no folder");
    const QString impossible = folder.path(u"file/below"_s);
    EXPECT_EQ(destinationFor(impossible), Session::defaultDestination());
    EXPECT_EQ(destinationFor(folder.path(u"file"_s)), Session::defaultDestination());
    EXPECT_EQ(preferences.text(key), folder.path(u"file"_s)) << "the stored path stays until the next choice";
}

TEST_F(SessionTest, fallsBackToTheDefaultBelowAReadOnlyFolder)
{
    preferences.set(key, folder.path(u"below"_s));
    preferences.flush();
    ASSERT_EQ(::chmod(qPrintable(folder.path()), 0555), 0);
    const int fellBack = inChild([&] {
        becomeUnprivileged();
        return Session(preferences).destination() == Session::defaultDestination() ? 1 : 0;
    });
    EXPECT_EQ(fellBack, 1);
}

TEST_F(SessionTest, fallsBackToTheDefaultForAnEmptyOrUnusableStoredValue)
{
    EXPECT_EQ(destinationFor(QString()), Session::defaultDestination());
    EXPECT_EQ(destinationFor(folder.path(u"cut"_s) + QChar(u'\0') + u"short"_s), Session::defaultDestination());
    EXPECT_FALSE(QFileInfo::exists(folder.path(u"cut"_s)));
    preferences.set(key, 7);
    EXPECT_EQ(Session(preferences).destination(), Session::defaultDestination());
}

TEST_F(SessionTest, announcesEveryTokenAlsoTheSameOne)
{
    Session session(preferences);
    QSignalSpy announced(&session, &Session::tokenChanged);
    session.setToken(u"abc"_s);
    session.setToken(u"abc"_s);
    session.setToken(QString());
    EXPECT_EQ(announced.count(), 3);
    EXPECT_TRUE(session.token().isEmpty());
}

TEST_F(SessionTest, deliversItsSignalsBeforeTheAssignmentReturns)
{
    Session session(preferences);
    QString seen;
    QObject::connect(&session, &Session::tokenChanged, &session, [&] { seen = session.token(); });
    session.setToken(u"abc"_s);
    EXPECT_EQ(seen, u"abc"_s);
}

TEST_F(SessionTest, storesNoToken)
{
    Session session(preferences);
    session.setDestination(QUrl::fromLocalFile(folder.path(u"music"_s)));
    session.setToken(u"canary-7391"_s);
    preferences.flush();
    EXPECT_TRUE(folder.read(u"preferences.json"_s).contains("music"));
    EXPECT_FALSE(folder.read(u"preferences.json"_s).contains("canary"));
}

TEST_F(SessionTest, storesAndAnnouncesEveryFolderAlsoTheSameOne)
{
    Session session(preferences);
    QSignalSpy announced(&session, &Session::destinationChanged);
    const QUrl music = QUrl::fromLocalFile(folder.path(u"music"_s));
    session.setDestination(music);
    session.setDestination(music);
    EXPECT_EQ(announced.count(), 2);
    EXPECT_EQ(session.destination(), music);
    preferences.flush();
    EXPECT_EQ(Preferences(folder.path(u"preferences.json"_s)).text(key), folder.path(u"music"_s));
    EXPECT_FALSE(QFileInfo::exists(folder.path(u"music"_s))) << "assigning makes no folder";
}

TEST_F(SessionTest, hasStoredTheFolderByTheTimeItAnnouncesIt)
{
    Session session(preferences);
    std::optional<QString> stored;
    QObject::connect(&session, &Session::destinationChanged, &session, [&] { stored = preferences.text(key); });
    session.setDestination(QUrl::fromLocalFile(folder.path(u"music"_s)));
    EXPECT_EQ(stored, folder.path(u"music"_s));
}

TEST_F(SessionTest, storesThePathWithoutAClosingSlash)
{
    Session session(preferences);
    session.setDestination(QUrl::fromLocalFile(folder.path(u"music/"_s)));
    EXPECT_EQ(preferences.text(key), folder.path(u"music"_s));
}

TEST_F(SessionTest, announcesEverySelectionAlsoTheSameOne)
{
    Session session(preferences);
    QSignalSpy announced(&session, &Session::selectionChanged);
    const TrackRef track = {
        .name = u"Song"_s, .audio = QUrl::fromLocalFile(u"/music/Song.mp3"_s), .artwork = {}, .lyrics = {}};
    session.setSelection(track);
    session.setSelection(track);
    session.setSelection(std::nullopt);
    EXPECT_EQ(announced.count(), 3);
    EXPECT_EQ(session.selection(), std::nullopt);
}

TEST_F(SessionTest, announcesNothingForTheAddressOfThePane)
{
    Session session(preferences);
    QSignalSpy tokens(&session, &Session::tokenChanged);
    QSignalSpy folders(&session, &Session::destinationChanged);
    QSignalSpy selections(&session, &Session::selectionChanged);
    QSignalSpy files(&session, &Session::filesChanged);
    session.openSunoURL = QUrl(u"https://pane.example/song"_s);
    EXPECT_EQ(tokens.count() + folders.count() + selections.count() + files.count(), 0);
}

TEST_F(SessionTest, derivesItsFoldersFromTheDestination)
{
    Session session(preferences);
    session.setDestination(QUrl::fromLocalFile(u"/music/50% & #1"_s));
    EXPECT_EQ(session.videosFolder().toLocalFile(), u"/music/50% & #1/Videos"_s);
    EXPECT_EQ(session.masteredFolder().toLocalFile(), u"/music/50% & #1/Mastered"_s);
    session.setDestination(QUrl::fromLocalFile(u"/music/"_s));
    EXPECT_EQ(session.videosFolder().toLocalFile(), u"/music/Videos"_s);
}

TEST(TrackRef, isUsableExactlyWithAudio)
{
    const QUrl file = QUrl::fromLocalFile(u"/music/Song"_s);
    EXPECT_TRUE((TrackRef{.name = {}, .audio = file, .artwork = {}, .lyrics = {}}).isUsable());
    EXPECT_FALSE((TrackRef{.name = u"Song"_s, .audio = {}, .artwork = file, .lyrics = file}).isUsable());
}

TEST(TrackRef, isEqualFieldByField)
{
    const QUrl file = QUrl::fromLocalFile(u"/music/Song"_s);
    const TrackRef track = {.name = u"Song"_s, .audio = file, .artwork = file, .lyrics = file};
    EXPECT_EQ(track, TrackRef(track));
    for (const auto& change : std::initializer_list<void (*)(TrackRef&)>{
             [](TrackRef& one) { one.name.clear(); }, [](TrackRef& one) { one.audio.reset(); },
             [](TrackRef& one) { one.artwork.reset(); }, [](TrackRef& one) { one.lyrics.reset(); }}) {
        TrackRef other = track;
        change(other);
        EXPECT_NE(track, other);
    }
}

} // namespace
} // namespace orvane::test
