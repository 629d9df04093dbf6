#include "tests/automation/RunFixture.h"

#include <QDir>

/// What a run reads and brings to the folder before the tracks are worked on.

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using testing::IsEmpty;

const QString partial = u"error: Stopping here: this is a partial library, and finishing on it would produce an "
                        "incomplete set that looks complete."_s;

using RunSourceTest = RunFixture;

TEST_F(RunSourceTest, aFolderRunWithNoTokenGoes)
{
    useFolder({u"007 - Hill.mp3"_s});
    session.setToken({});
    service.clearRequests();
    runToTheEnd();
    EXPECT_TRUE(summaries.value(0).isSuccess());
    EXPECT_EQ(logged().last(), u"success: Finished — 3 done, 3 switched off."_s);
    EXPECT_EQ(files(), (QStringList{u"Hill.mp3"_s, u"Tracklist.txt"_s}));
    EXPECT_THAT(service.requests(), IsEmpty());
}

TEST_F(RunSourceTest, isTheOneThatWasChosenAtTheStart)
{
    useFolder({u"007 - Hill.mp3"_s});
    QObject::connect(&run(), &AutomaterRun::runningChanged, &run(), [this] { choices.source = RunSource::download; });
    service.clearRequests();
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::read), StageState::skipped(u"using files already here"_s));
    EXPECT_THAT(service.requests(), IsEmpty());
}

TEST_F(RunSourceTest, aRejectedSessionFailsTheReadWithItsWords)
{
    service.expireTokens();
    runToTheEnd();
    const QString text = u"Suno rejected the session (HTTP 401). Open the Suno tab and sign in again."_s;
    EXPECT_EQ(told(), (QStringList{u"> Read the library: running"_s, u"> Read the library: failed, "_s + text,
                                   u"error: "_s + text, u"error: Stopped — 0 done, 1 failed, 5 not reached."_s}));
    EXPECT_FALSE(QDir(folder()).exists(u"Mastered"_s));
}

TEST_F(RunSourceTest, aProjectWithoutTracksFailsTheRead)
{
    service.setLibrary(shortTracks(0));
    runToTheEnd();
    EXPECT_EQ(told(), (QStringList{u"> Read the library: running"_s,
                                   u"> Read the library: failed, that workspace has no tracks"_s,
                                   u"error: Stopped — 0 done, 1 failed, 5 not reached."_s}));
}

TEST_F(RunSourceTest, ofAPartialLibraryNothingIsWritten)
{
    demo::LibraryOptions library = shortTracks(400);
    library.pageSize = 100;
    service.setLibrary(library);
    service.script(answering(404, u"page=4"_s, 10));
    runToTheEnd();
    EXPECT_EQ(told(), (QStringList{u"> Read the library: running"_s,
                                   u"error: Page 4 returned HTTP 404; keeping the 300 tracks read so far."_s,
                                   u"> Read the library: failed, only 300 tracks read before Suno stopped responding"_s,
                                   partial, u"error: Stopped — 0 done, 1 failed, 5 not reached."_s}));
    EXPECT_THAT(files(), IsEmpty());
    EXPECT_EQ(run().outcomes().size(), 1);
}

TEST_F(RunSourceTest, aTokenThatExpiresInTheMiddleStopsAtTheRead)
{
    demo::LibraryOptions library = shortTracks(4);
    library.pageSize = 2;
    service.setLibrary(library);
    onLine = [this](const QString& line) {
        if (line.startsWith(u"info: Page 1"))
            service.expireTokens();
    };
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::read), StageState::failed(u"only 2 tracks read before Suno stopped responding"_s));
    EXPECT_THAT(files(), IsEmpty());
}

TEST_F(RunSourceTest, aTokenThatRotatesIsPickedUpAtTheNextPage)
{
    demo::LibraryOptions library = shortTracks(3);
    library.pageSize = 1;
    service.setLibrary(library);
    only(Stage::tag);
    onLine = [this](const QString& line) {
        if (!line.startsWith(u"info: Page 1"))
            return;
        service.expireTokens();
        session.setToken(service.currentToken());
    };
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::read), StageState::done(u"3 tracks"_s));
    EXPECT_TRUE(summaries.value(0).isSuccess());
}

TEST_F(RunSourceTest, aFolderThatCannotBeMadeFailsTheDownload)
{
    run().prerequisites.clear();
    QFile obstacle(folder());
    ASSERT_TRUE(obstacle.open(QFile::WriteOnly));
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::download), StageState::failed(u"Export: Not a directory"_s));
    EXPECT_EQ(logged(), QStringList{u"error: Stopped — 1 done, 1 failed, 4 not reached."_s});
}

TEST_F(RunSourceTest, aTrackWhoseAudioFailsIsLeftOutOfTheLaterStages)
{
    only(Stage::tag);
    service.script(answering(404, service.tracks().at(0).id + u".mp3"_s, 10));
    runToTheEnd();
    EXPECT_EQ(logged().first(), u"error: MP3 failed for %1: HTTP 404"_s.arg(title(0)));
    EXPECT_EQ(outcome(Stage::download), StageState::done(u"1 of 2 tracks, 1 problem(s)"_s));
    EXPECT_EQ(outcome(Stage::tag), StageState::done(u"1 file(s)"_s));
    EXPECT_TRUE(summaries.value(0).isSuccess());
}

TEST_F(RunSourceTest, aCoverThatFailsIsCountedAndHoldsNothingBack)
{
    only(Stage::tag);
    assets = {Asset::audio, Asset::artwork};
    service.script(answering(404, u"image"_s, 1));
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::tag), StageState::done(u"2 file(s)"_s));
}

TEST_F(RunSourceTest, withEverythingFailedNothingIsLeftToWorkOn)
{
    for (const demo::Track& track : service.tracks())
        service.script(answering(404, track.id + u".mp3"_s, 10));
    assets = {Asset::audio};
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::download), StageState::done(u"0 of 2 tracks, 2 problem(s)"_s));
    EXPECT_EQ(outcome(Stage::rename), StageState::skipped(u"nothing downloaded to rename"_s));
    EXPECT_EQ(outcome(Stage::tag), StageState::skipped(u"nothing downloaded to tag"_s));
    EXPECT_EQ(outcome(Stage::master), StageState::skipped(u"nothing downloaded to master"_s));
    EXPECT_EQ(outcome(Stage::video), StageState::skipped(u"turned off"_s));
    EXPECT_EQ(logged().last(), u"success: Finished — 2 done, 4 switched off."_s);
}

TEST_F(RunSourceTest, anEmptyFolderFailsTheDownload)
{
    choices.source = RunSource::folder;
    runToTheEnd();
    EXPECT_EQ(told(), (QStringList{u"> Read the library: skipped, using files already here"_s,
                                   u"> Download assets: failed, no tracks in Export"_s,
                                   u"error: Stopped — 0 done, 1 switched off, 1 failed, 4 not reached."_s}));
}

TEST_F(RunSourceTest, aSelectionWithNoAudioFailsTheDownload)
{
    useFolder({u"Hill.mp3"_s});
    choices.source = RunSource::selection;
    session.setSelection(TrackRef{.name = u"Hill"_s, .audio = {}, .artwork = {}, .lyrics = {}});
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::download), StageState::failed(u"no track is selected in Files"_s));
}

TEST_F(RunSourceTest, withoutASelectionTheDownloadFails)
{
    useFolder({u"Hill.mp3"_s});
    choices.source = RunSource::selection;
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::download), StageState::failed(u"no track is selected in Files"_s));
}

TEST_F(RunSourceTest, aSelectionIsTheOnlyTrackWorkedOn)
{
    useFolder({u"Hill.mp3"_s, u"Hill 2.mp3"_s});
    choices.source = RunSource::selection;
    select(u"Hill 2.mp3"_s);
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::download), StageState::skipped(u"1 already here"_s));
    EXPECT_EQ(files(u"Mastered"_s), QStringList{u"Hill 2.wav"_s});
    EXPECT_EQ(read(u"Hill.mp3"_s), recording());
    EXPECT_NE(read(u"Hill 2.mp3"_s), recording());
}

} // namespace
} // namespace orvane::test
