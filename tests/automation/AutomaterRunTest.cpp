#include "mastering/WatermarkSettings.h"
#include "tests/automation/AutomationFixture.h"

#include <QDir>
#include <QSignalSpy>

#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

const QString partial = u"error: Stopping here: this is a partial library, and finishing on it would produce an "
                        "incomplete set that looks complete."_s;

class AutomaterRunTest : public AutomationFixture
{
protected:
    QString title(int position) const { return service.tracks().at(position).title; }

    void useFolder(const QStringList& names)
    {
        choices.source = RunSource::folder;
        for (const QString& name : names)
            write(name, recording());
    }

    void only(Stage stage)
    {
        choices.rename = stage == Stage::rename;
        choices.tag = stage == Stage::tag;
        choices.master = stage == Stage::master;
    }

    /// A tag of the user's own that the run is to mix in.
    void useWatermark()
    {
        write(u"../drop.mp3"_s, recording());
        const Master::Watermark watermark{
            .isOn = true, .file = home.filePath(u"drop.mp3"_s), .level = -12, .placement = Master::placementForTag(0)};
        WatermarkSettings::store(preferences, u"auto"_s, watermark);
    }

    void removeFile(const QString& name) const { EXPECT_TRUE(QFile::remove(path(name))); }

    void removeFolder() const { EXPECT_TRUE(QDir(folder()).removeRecursively()); }

    std::string tagOf(const QString& name, const char* frame) const
    {
        TagLib::MPEG::File file(qPrintable(path(name)));
        const auto& frames = file.ID3v2Tag()->frameListMap()[frame];
        return frames.isEmpty() ? std::string() : frames.front()->toString().to8Bit(true);
    }
};

TEST_F(AutomaterRunTest, aWholeRunReadsDownloadsRenamesTagsAndMasters)
{
    runToTheEnd();
    EXPECT_TRUE(summaries.value(0).isSuccess());
    EXPECT_EQ(logged().last(), u"success: Finished — 5 done, 1 switched off."_s);
    for (const demo::Track& track : service.tracks()) {
        EXPECT_TRUE(files().contains(track.title + u".mp3"_s)) << track.title.toStdString();
        EXPECT_TRUE(files(u"Mastered"_s).contains(track.title + u".wav"_s)) << track.title.toStdString();
    }
    EXPECT_EQ(read(u"Tracklist.txt"_s), (u"01. "_s + title(0) + u"\n02. "_s + title(1)).toUtf8());
}

TEST_F(AutomaterRunTest, withoutAConfigurationNothingHappens)
{
    run().configProvider = [] { return std::optional<PipelineConfig>(); };
    run().toggle();
    EXPECT_FALSE(run().isRunning());
    EXPECT_THAT(lines, IsEmpty());
}

TEST_F(AutomaterRunTest, aPrerequisiteThatIsNotMetIsSaidAndChangesNothing)
{
    session.setToken({});
    run().toggle();
    EXPECT_EQ(lines, QStringList{u"error: Not ready yet — see the list above."_s});
    EXPECT_FALSE(run().isRunning());
    EXPECT_FALSE(session.automationInProgress);
}

TEST_F(AutomaterRunTest, prerequisitesAreAskedInOrderUpToTheFirstThatIsNotMet)
{
    QStringList asked;
    const auto asking = [&asked](const QString& name, bool isMet) {
        return Prerequisite{.title = name,
                            .fix = {},
                            .tab = {},
                            .isMet =
                                [&asked, name, isMet] {
                                    asked.append(name);
                                    return isMet;
                                },
                            .detail = {}};
    };
    run().prerequisites = {asking(u"one"_s, true), asking(u"two"_s, false), asking(u"three"_s, true)};
    run().toggle();
    EXPECT_EQ(asked, (QStringList{u"one"_s, u"two"_s}));
}

TEST_F(AutomaterRunTest, whileTheDownloaderExportsItSaysSoAndChangesNothing)
{
    session.downloadInProgress = true;
    run().toggle();
    EXPECT_EQ(lines,
              QStringList{u"error: The Downloader is already exporting. Let it finish, or stop it there first."_s});
    EXPECT_FALSE(run().isRunning());
    EXPECT_FALSE(session.automationInProgress);
}

TEST_F(AutomaterRunTest, theSessionIsBusyFromTheStartToTheEnd)
{
    QStringList order;
    QObject::connect(&run(), &AutomaterRun::runningChanged, &run(), [&](bool running) {
        EXPECT_EQ(session.automationInProgress, running);
        EXPECT_EQ(run().isRunning(), running);
        order.append(running ? u"begins"_s : u"rests"_s);
    });
    QObject::connect(&run(), &AutomaterRun::finished, &run(), [&] { order.append(u"finished"_s); });
    runToTheEnd();
    EXPECT_EQ(order, (QStringList{u"begins"_s, u"rests"_s, u"finished"_s}));
}

TEST_F(AutomaterRunTest, aFolderRunWithNoTokenGoes)
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

TEST_F(AutomaterRunTest, aRejectedSessionFailsTheReadWithItsWords)
{
    service.expireTokens();
    runToTheEnd();
    const QString text = u"Suno rejected the session (HTTP 401). Open the Suno tab and sign in again."_s;
    EXPECT_EQ(told(), (QStringList{u"> Read the library: running"_s, u"> Read the library: failed, "_s + text,
                                   u"error: "_s + text, u"error: Stopped — 0 done, 1 failed, 5 not reached."_s}));
    EXPECT_FALSE(QDir(folder()).exists(u"Mastered"_s));
}

TEST_F(AutomaterRunTest, aProjectWithoutTracksFailsTheRead)
{
    service.setLibrary(shortTracks(0));
    runToTheEnd();
    EXPECT_EQ(told(), (QStringList{u"> Read the library: running"_s,
                                   u"> Read the library: failed, that workspace has no tracks"_s,
                                   u"error: Stopped — 0 done, 1 failed, 5 not reached."_s}));
}

TEST_F(AutomaterRunTest, ofAPartialLibraryNothingIsWritten)
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

TEST_F(AutomaterRunTest, aTokenThatExpiresInTheMiddleStopsAtTheRead)
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

TEST_F(AutomaterRunTest, aTokenThatRotatesIsPickedUpAtTheNextPage)
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

TEST_F(AutomaterRunTest, aFolderThatCannotBeMadeFailsTheDownload)
{
    run().prerequisites.clear();
    QFile obstacle(folder());
    ASSERT_TRUE(obstacle.open(QFile::WriteOnly));
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::download), StageState::failed(u"Export: Not a directory"_s));
    EXPECT_EQ(logged(), QStringList{u"error: Stopped — 1 done, 1 failed, 4 not reached."_s});
}

TEST_F(AutomaterRunTest, aTrackWhoseAudioFailsIsLeftOutOfTheLaterStages)
{
    only(Stage::tag);
    service.script(answering(404, service.tracks().at(0).id + u".mp3"_s, 10));
    runToTheEnd();
    EXPECT_EQ(logged().first(), u"error: MP3 failed for %1: HTTP 404"_s.arg(title(0)));
    EXPECT_EQ(outcome(Stage::download), StageState::done(u"1 of 2 tracks, 1 problem(s)"_s));
    EXPECT_EQ(outcome(Stage::tag), StageState::done(u"1 file(s)"_s));
    EXPECT_TRUE(summaries.value(0).isSuccess());
}

TEST_F(AutomaterRunTest, aCoverThatFailsIsCountedAndHoldsNothingBack)
{
    only(Stage::tag);
    assets = {Asset::audio, Asset::artwork};
    service.script(answering(404, u"image"_s, 1));
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::tag), StageState::done(u"2 file(s)"_s));
}

TEST_F(AutomaterRunTest, withEverythingFailedNothingIsLeftToWorkOn)
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

TEST_F(AutomaterRunTest, theProgressNamesTheTrackAtHand)
{
    only(Stage::master);
    runToTheEnd();
    QStringList labels;
    for (const RunProgress& at : progress)
        labels.append(at.label);
    EXPECT_EQ(labels,
              (QStringList{u"1 of 2 tracks — "_s + title(0), u"2 of 2 tracks — "_s + title(1), QString(),
                           u"mastering 1 of 2 — 001 - "_s + title(0), u"mastering 2 of 2 — 002 - "_s + title(1)}));
    EXPECT_EQ(progress.at(1).fraction(), 0.5);
    EXPECT_EQ(progress.at(2).fraction(), 1.0);
}

TEST_F(AutomaterRunTest, anEmptyFolderFailsTheDownload)
{
    choices.source = RunSource::folder;
    runToTheEnd();
    EXPECT_EQ(told(), (QStringList{u"> Read the library: skipped, using files already here"_s,
                                   u"> Download assets: failed, no tracks in Export"_s,
                                   u"error: Stopped — 0 done, 1 switched off, 1 failed, 4 not reached."_s}));
}

TEST_F(AutomaterRunTest, aSelectionWithNoAudioFailsTheDownload)
{
    useFolder({u"Hill.mp3"_s});
    choices.source = RunSource::selection;
    session.setSelection(TrackRef{.name = u"Hill"_s, .audio = {}, .artwork = {}, .lyrics = {}});
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::download), StageState::failed(u"no track is selected in Files"_s));
}

TEST_F(AutomaterRunTest, withoutASelectionTheDownloadFails)
{
    useFolder({u"Hill.mp3"_s});
    choices.source = RunSource::selection;
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::download), StageState::failed(u"no track is selected in Files"_s));
}

TEST_F(AutomaterRunTest, aSelectionIsTheOnlyTrackWorkedOn)
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

TEST_F(AutomaterRunTest, theNamerIsAskedForThePattern)
{
    useFolder({u"Hill.mp3"_s});
    only(Stage::rename);
    run().namingProvider = []() -> QCoro::Task<std::optional<QString>> { co_return u"numbered"_s; };
    runToTheEnd();
    EXPECT_EQ(logged().first(), u"info: Naming: each track after itself, formatted as numbered."_s);
    EXPECT_EQ(files(), (QStringList{u"01 - Hill.mp3"_s, u"Tracklist.txt"_s}));
}

TEST_F(AutomaterRunTest, withoutAPatternFromTheNamerThePickersCounts)
{
    useFolder({u"Hill.mp3"_s});
    only(Stage::rename);
    choices.patternIndex = 2;
    run().namingProvider = []() -> QCoro::Task<std::optional<QString>> { co_return std::nullopt; };
    runToTheEnd();
    EXPECT_EQ(logged().first(), u"info: Naming: each track after itself, formatted as dotnumber."_s);
    EXPECT_EQ(files(), (QStringList{u"01. Hill.mp3"_s, u"Tracklist.txt"_s}));
}

TEST_F(AutomaterRunTest, twoTracksWhoseNewNamesCollideGetDifferentStems)
{
    useFolder({u"001 - Ocean.mp3"_s, u"002 - Ocean.mp3"_s});
    only(Stage::rename);
    runToTheEnd();
    EXPECT_EQ(files(), (QStringList{u"Ocean (2).mp3"_s, u"Ocean.mp3"_s, u"Tracklist.txt"_s}));
    EXPECT_EQ(run().renamedStems(),
              (QHash<QString, QString>{{u"001 - Ocean"_s, u"Ocean"_s}, {u"002 - Ocean"_s, u"Ocean (2)"_s}}));
    EXPECT_EQ(read(u"Tracklist.txt"_s), "01. Ocean\n02. Ocean");
}

TEST_F(AutomaterRunTest, whatLiesAtATargetIsNotReplaced)
{
    useFolder({u"Ocean.wav"_s, u"001 - Ocean.mp3"_s});
    write(u"Ocean.mp3"_s, "mine");
    only(Stage::rename);
    choices.source = RunSource::selection;
    select(u"001 - Ocean.mp3"_s);
    runToTheEnd();
    EXPECT_EQ(logged().at(1), u"info: Not renaming 001 - Ocean.mp3: Ocean.mp3 already exists."_s);
    EXPECT_EQ(outcome(Stage::rename), StageState::done(u"0 file(s) renamed"_s));
    EXPECT_EQ(read(u"Ocean.mp3"_s), "mine");
}

TEST_F(AutomaterRunTest, tagsAreWrittenUnderTheNewStem)
{
    useFolder({u"001 - Ocean.mp3"_s});
    write(u"001 - Ocean lyrics.txt"_s, "Title: Blue Ocean\nTags: slow pop\n\none\ntwo");
    write(u"001 - Ocean.jpg"_s, service.artworkOf(service.tracks().first().id));
    runToTheEnd();
    ASSERT_TRUE(files().contains(u"Blue Ocean.mp3"_s));
    EXPECT_EQ(tagOf(u"Blue Ocean.mp3"_s, "TIT2"), "Blue Ocean");
    EXPECT_EQ(tagOf(u"Blue Ocean.mp3"_s, "TPE1"), "Suno AI");
    EXPECT_EQ(tagOf(u"Blue Ocean.mp3"_s, "TALB"), "Export");
    EXPECT_EQ(tagOf(u"Blue Ocean.mp3"_s, "TCON"), "slow pop");
    EXPECT_EQ(tagOf(u"Blue Ocean.mp3"_s, "TRCK"), "1/1");
    EXPECT_EQ(tagOf(u"Blue Ocean.mp3"_s, "USLT"), "one\ntwo");
    EXPECT_NE(tagOf(u"Blue Ocean.mp3"_s, "APIC"), "");
    EXPECT_EQ(files(u"Mastered"_s), QStringList{u"Blue Ocean.wav"_s});
}

TEST_F(AutomaterRunTest, anEmptyGenreAndEmptyLyricsLeaveNoFrame)
{
    useFolder({u"Ocean.mp3"_s});
    only(Stage::tag);
    runToTheEnd();
    EXPECT_EQ(tagOf(u"Ocean.mp3"_s, "TCON"), "");
    EXPECT_EQ(tagOf(u"Ocean.mp3"_s, "USLT"), "");
}

TEST_F(AutomaterRunTest, theAlbumIsTheSessionsFolderWhileTheFilesStayWhereTheRunBegan)
{
    useFolder({u"Ocean.mp3"_s});
    onLine = [this](const QString& line) {
        if (line == u"> Rename to your scheme: running")
            session.setDestination(QUrl::fromLocalFile(home.filePath(u"Elsewhere"_s)));
    };
    runToTheEnd();
    EXPECT_EQ(tagOf(u"Ocean.mp3"_s, "TALB"), "Elsewhere");
    EXPECT_EQ(files(u"Mastered"_s), QStringList{u"Ocean.wav"_s});
    EXPECT_FALSE(QDir(home.filePath(u"Elsewhere"_s)).exists());
}

TEST_F(AutomaterRunTest, aFileThatIsNoMp3IsPassedOverByTheTagsAndMastered)
{
    useFolder({u"Ocean.wav"_s});
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::tag), StageState::done(u"0 file(s)"_s));
    EXPECT_EQ(outcome(Stage::master), StageState::done(u"1 mastered for Spotify"_s));
}

TEST_F(AutomaterRunTest, aFileThatCannotBeTaggedIsToldAndCounted)
{
    useFolder({u"Ocean.mp3"_s});
    write(u"Page.mp3"_s, "<html>");
    only(Stage::tag);
    runToTheEnd();
    EXPECT_EQ(logged().first(),
              u"error: Tagging failed for Page: Page.mp3 does not look like an MP3, so it was left alone."_s);
    EXPECT_EQ(outcome(Stage::tag), StageState::done(u"1 tagged, 1 failed"_s));
    EXPECT_TRUE(summaries.value(0).isSuccess());
}

TEST_F(AutomaterRunTest, aFileThatCannotBeMasteredIsToldAndCounted)
{
    useFolder({u"Ocean.mp3"_s});
    write(u"Page.mp3"_s, "<html>");
    only(Stage::master);
    runToTheEnd();
    EXPECT_TRUE(logged().at(2).startsWith(u"error: Mastering failed for Page: ")) << logged().at(2).toStdString();
    EXPECT_EQ(outcome(Stage::master), StageState::done(u"1 mastered, 1 failed"_s));
    EXPECT_EQ(files(u"Mastered"_s), QStringList{u"Ocean.wav"_s});
}

TEST_F(AutomaterRunTest, theMasteringTabIsAskedForTheTarget)
{
    useFolder({u"Ocean.mp3"_s});
    only(Stage::master);
    run().masteringProvider = [] { return MasteringTarget{Master::platforms()[2], Master::Format::flac}; };
    runToTheEnd();
    EXPECT_EQ(logged().first(), u"info: Mastering: Apple Music · FLAC, from the Mastering tab."_s);
    EXPECT_EQ(outcome(Stage::master), StageState::done(u"1 mastered for Apple Music"_s));
    EXPECT_EQ(files(u"Mastered"_s), QStringList{u"Ocean.flac"_s});
}

TEST_F(AutomaterRunTest, aMasterTellsItsLoudnessBeforeAndAfter)
{
    useFolder({u"Ocean.mp3"_s});
    only(Stage::master);
    runToTheEnd();
    EXPECT_THAT(logged().at(1).toStdString(),
                testing::MatchesRegex("success: Ocean: -[0-9]+\\.[0-9] → -14\\.[0-9] LUFS, "
                                      "-[0-9]+\\.[0-9] dBTP( \\(limited\\))?"));
}

TEST_F(AutomaterRunTest, aMasterIsWrittenAgainOnEachRun)
{
    useFolder({u"Ocean.mp3"_s});
    only(Stage::master);
    write(u"Mastered/Ocean.wav"_s, "old");
    runToTheEnd();
    EXPECT_TRUE(read(u"Mastered/Ocean.wav"_s).startsWith("RIFF"));
}

TEST_F(AutomaterRunTest, aUsableWatermarkIsTold)
{
    useFolder({u"Ocean.mp3"_s});
    only(Stage::master);
    useWatermark();
    runToTheEnd();
    EXPECT_EQ(logged().at(1), u"info: Watermark: drop.mp3 at 12 dB under the music, Start and end only."_s);
}

TEST_F(AutomaterRunTest, preferencesOfAnotherKindCountAsNone)
{
    useFolder({u"Ocean.mp3"_s});
    only(Stage::master);
    preferences.set(u"watermark.auto.on"_s, u"yes"_s);
    preferences.set(u"watermark.auto.file"_s, 7);
    preferences.set(u"watermark.auto.level"_s, u"loud"_s);
    preferences.set(u"watermark.auto.placement"_s, true);
    preferences.set(u"mp3Bitrate"_s, u"many"_s);
    runToTheEnd();
    EXPECT_EQ(logged().size(), 3);
    EXPECT_EQ(outcome(Stage::master), StageState::done(u"1 mastered for Spotify"_s));
}

TEST_F(AutomaterRunTest, aTracklistThatCannotBeWrittenFailsTheRenameAndNotTheRun)
{
    useFolder({u"001 - Ocean.mp3"_s});
    ASSERT_TRUE(QDir().mkpath(path(u"Tracklist.txt"_s)));
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::rename), StageState::failed(u"Tracklist.txt: Is a directory"_s));
    EXPECT_EQ(logged().mid(1, 2),
              (QStringList{u"error: Tracklist.txt: Is a directory"_s,
                           u"info: Your downloads are still in Export under their original names."_s}));
    EXPECT_EQ(outcome(Stage::tag), StageState::done(u"1 file(s)"_s));
    EXPECT_EQ(logged().last(), u"error: Stopped — 2 done, 3 switched off, 1 failed."_s);
}

TEST_F(AutomaterRunTest, aStopDuringTheDownloadLeavesTheLaterStagesAndANewRunFindsTheFiles)
{
    onProgress = [this](const RunProgress& at) {
        if (at.done == 1)
            run().toggle();
    };
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::download), StageState::failed(u"stopped 1 of 2"_s));
    EXPECT_EQ(logged(), (QStringList{u"error: Stopping…"_s, u"error: Stopped — 1 done, 1 failed, 4 not reached."_s}));
    EXPECT_TRUE(summaries.value(0).wasStopped);
    EXPECT_TRUE(files().contains(u"001 - "_s + title(0) + u".mp3"_s));

    onProgress = nullptr;
    service.clearRequests();
    runToTheEnd();
    EXPECT_TRUE(summaries.value(1).isSuccess());
    EXPECT_FALSE(summaries.value(1).wasStopped);
    for (const demo::SeenRequest& request : service.requests())
        EXPECT_FALSE(request.target.contains(service.tracks().at(0).id.toUtf8() + ".mp3"));
    EXPECT_EQ(files(u"Mastered"_s).size(), 2);
}

TEST_F(AutomaterRunTest, aSecondStopSaysNothingMore)
{
    onProgress = [this](const RunProgress& at) {
        if (at.done != 1)
            return;
        run().stop();
        run().stop();
    };
    runToTheEnd();
    EXPECT_EQ(logged().count(u"error: Stopping…"_s), 1);
}

TEST_F(AutomaterRunTest, filesThatSomebodyRemovesBetweenTheStagesArePassedOver)
{
    useFolder({u"001 - Ocean.mp3"_s, u"002 - Lake.mp3"_s});
    onLine = [this](const QString& line) {
        if (line == u"> Write tags: running")
            removeFile(u"Ocean.mp3"_s);
    };
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::tag), StageState::done(u"1 file(s)"_s));
    EXPECT_EQ(files(u"Mastered"_s), QStringList{u"Lake.wav"_s});
}

TEST_F(AutomaterRunTest, filesThatSomebodyRemovesDuringAStageAreTold)
{
    useFolder({u"Lake.mp3"_s, u"Ocean.mp3"_s});
    only(Stage::tag);
    onProgress = [this](const RunProgress& at) {
        if (at.done == 1)
            removeFile(u"Ocean.mp3"_s);
    };
    runToTheEnd();
    EXPECT_EQ(logged().first(), u"error: Tagging failed for Ocean: Ocean.mp3: No such file or directory"_s);
    EXPECT_EQ(outcome(Stage::tag), StageState::done(u"1 tagged, 1 failed"_s));
}

TEST_F(AutomaterRunTest, aDestinationThatVanishesIsNotMadeAgain)
{
    useFolder({u"001 - Ocean.mp3"_s});
    onLine = [this](const QString& line) {
        if (line == u"> Rename to your scheme: running")
            removeFolder();
    };
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::rename), StageState::failed(u"Tracklist.txt: No such file or directory"_s));
    EXPECT_EQ(outcome(Stage::tag), StageState::done(u"0 file(s)"_s));
    EXPECT_EQ(outcome(Stage::master), StageState::failed(u"Mastered: No such file or directory"_s));
    EXPECT_FALSE(QDir(folder()).exists());
}

TEST_F(AutomaterRunTest, aDestinationThatVanishesInTheTagsOrTheMastersIsToldAndNotMadeAgain)
{
    for (const Stage stage : {Stage::tag, Stage::master}) {
        SCOPED_TRACE(nameOf(stage).toStdString());
        lines.clear();
        useFolder({u"Lake.mp3"_s, u"Ocean.mp3"_s});
        only(stage);
        onProgress = [this, stage](const RunProgress& at) {
            if (at.stage == stage && at.done == 1)
                removeFolder();
        };
        runToTheEnd();
        const QString told =
            stage == Stage::tag ? u"error: Tagging failed for Ocean: "_s : u"error: Mastering failed for Ocean: "_s;
        EXPECT_THAT(logged(), testing::Contains(told + u"Ocean.mp3: No such file or directory"_s));
        EXPECT_EQ(outcome(stage).note, stage == Stage::tag ? u"1 tagged, 1 failed"_s : u"1 mastered, 1 failed"_s);
        EXPECT_FALSE(QDir(folder()).exists());
    }
}

TEST_F(AutomaterRunTest, filesThatSomebodyRenamesBetweenTheStagesArePassedOver)
{
    useFolder({u"001 - Ocean.mp3"_s, u"002 - Lake.mp3"_s});
    onLine = [this](const QString& line) {
        if (line == u"> Write tags: running")
            QFile::rename(path(u"Ocean.mp3"_s), path(u"Sea.mp3"_s));
    };
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::tag), StageState::done(u"1 file(s)"_s));
    EXPECT_EQ(read(u"Sea.mp3"_s), recording());
    EXPECT_EQ(files(u"Mastered"_s), QStringList{u"Lake.wav"_s});
}

TEST_F(AutomaterRunTest, aDestinationThatVanishesInTheDownloadFailsEachTrack)
{
    onProgress = [this](const RunProgress& at) {
        if (at.stage == Stage::download && at.done == 1)
            removeFolder();
    };
    runToTheEnd();
    EXPECT_TRUE(outcome(Stage::download).note.startsWith(u"1 of 2 tracks, "))
        << outcome(Stage::download).note.toStdString();
    EXPECT_FALSE(QDir(folder()).exists());
    EXPECT_FALSE(summaries.value(0).isSuccess());
}

TEST_F(AutomaterRunTest, aFileInTheWayOfTheMastersFailsTheMastering)
{
    useFolder({u"Ocean.mp3"_s});
    only(Stage::master);
    write(u"Mastered"_s, "in the way");
    runToTheEnd();
    EXPECT_TRUE(outcome(Stage::master).note.startsWith(u"Mastered: ")) << outcome(Stage::master).note.toStdString();
    EXPECT_EQ(outcome(Stage::master).kind, StageState::Kind::failed);
    EXPECT_EQ(read(u"Mastered"_s), "in the way");
}

TEST_F(AutomaterRunTest, leftoversOfAKilledRunAreRemoved)
{
    useFolder({u"Ocean.mp3"_s});
    write(u".Ocean.mp3.tagging"_s, "half");
    write(u"Mastered/.Ocean.wav.new"_s, "half");
    runToTheEnd();
    EXPECT_EQ(files(), (QStringList{u"Ocean.mp3"_s, u"Tracklist.txt"_s}));
    EXPECT_EQ(files(u"Mastered"_s), QStringList{u"Ocean.wav"_s});
}

TEST_F(AutomaterRunTest, theFolderIsOpenedWhereTheUserWantsItAndSomethingWasDone)
{
    QList<QUrl> opened;
    run().onOpenFolder = [&](const QUrl& which) { opened.append(which); };
    useFolder({u"Ocean.mp3"_s});
    only(Stage::tag);
    runToTheEnd();
    EXPECT_THAT(opened, IsEmpty());
    choices.openWhenDone = true;
    runToTheEnd();
    EXPECT_THAT(opened, ElementsAre(session.destination()));
    only(Stage::video);
    runToTheEnd();
    EXPECT_EQ(opened.size(), 1);
}

TEST_F(AutomaterRunTest, aLaterRunBeginsWithEmptyOutcomesAndStems)
{
    useFolder({u"001 - Ocean.mp3"_s});
    runToTheEnd();
    EXPECT_FALSE(run().renamedStems().isEmpty());
    QObject::connect(&run(), &AutomaterRun::runningChanged, &run(), [this](bool running) {
        if (!running)
            return;
        EXPECT_THAT(run().outcomes(), IsEmpty());
        EXPECT_THAT(run().renamedStems(), IsEmpty());
    });
    runToTheEnd();
}

TEST_F(AutomaterRunTest, theFilesAreAnnouncedAsChanged)
{
    useFolder({u"001 - Ocean.mp3"_s});
    only(Stage::rename);
    QSignalSpy changed(&session, &Session::filesChanged);
    runToTheEnd();
    EXPECT_EQ(changed.size(), 1);
}

TEST_F(AutomaterRunTest, timeLeftIsToldFromTheFourthTrackOn)
{
    useFolder({u"A.mp3"_s, u"B.mp3"_s, u"C.mp3"_s, u"D.mp3"_s, u"E.mp3"_s});
    only(Stage::tag);
    onProgress = [this](const RunProgress&) { clock.pass(std::chrono::seconds(2)); };
    runToTheEnd();
    ASSERT_EQ(progress.size(), 5);
    EXPECT_EQ(progress.at(2).timeLeft, std::nullopt);
    EXPECT_EQ(progress.at(3).timeLeft, std::chrono::seconds(4));
    EXPECT_EQ(progress.at(4).timeLeft, std::chrono::seconds(2));
}

TEST_F(AutomaterRunTest, aRunThatIsDestroyedEndsFirst)
{
    QList<QUrl> opened;
    choices.openWhenDone = true;
    run().onOpenFolder = [&](const QUrl& which) { opened.append(which); };
    run().toggle();
    ASSERT_TRUE(waitUntil([this] { return lines.contains(u"> Download assets: running"_s); }));
    automater.reset();
    EXPECT_FALSE(session.automationInProgress);
    EXPECT_THAT(opened, IsEmpty());
}

TEST_F(AutomaterRunTest, thePlanOfAFolderCountsWhatLiesThere)
{
    useFolder({u"Ocean.mp3"_s, u"Lake.wav"_s});
    const QString plan = QCoro::waitFor(run().plan());
    EXPECT_EQ(plan, u"Read the library — not needed, uses the files in Export\n"
                    "Download assets — nothing, 2 tracks already here\n"
                    "Rename to your scheme — 2 tracks, formatted as clean, with a Tracklist.txt\n"
                    "Write tags — 1 track with an MP3\n"
                    "Master audio — 2 tracks for Spotify at -14 LUFS as WAV 24-bit, into Mastered\n"
                    "Render videos — turned off"_s);
    EXPECT_EQ(files(), (QStringList{u"Lake.wav"_s, u"Ocean.mp3"_s}));
}

TEST_F(AutomaterRunTest, thePlanOfALibraryAsksTheServiceNothing)
{
    service.clearRequests();
    EXPECT_TRUE(QCoro::waitFor(run().plan()).startsWith(u"Read the library — the whole library\n"));
    EXPECT_THAT(service.requests(), IsEmpty());
}

} // namespace
} // namespace orvane::test
