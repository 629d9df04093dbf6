#include "tests/automation/RunFixture.h"

#include <QDir>

/// Names, tags and masters.

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

using RunStageTest = RunFixture;

TEST_F(RunStageTest, theNamerIsAskedForThePattern)
{
    useFolder({u"Hill.mp3"_s});
    only(Stage::rename);
    run().namingProvider = []() -> QCoro::Task<std::optional<QString>> { co_return u"numbered"_s; };
    runToTheEnd();
    EXPECT_EQ(logged().first(), u"info: Naming: each track after itself, formatted as numbered."_s);
    EXPECT_EQ(files(), (QStringList{u"01 - Hill.mp3"_s, u"Tracklist.txt"_s}));
}

TEST_F(RunStageTest, withoutAPatternFromTheNamerThePickersCounts)
{
    useFolder({u"Hill.mp3"_s});
    only(Stage::rename);
    choices.patternIndex = 2;
    run().namingProvider = []() -> QCoro::Task<std::optional<QString>> { co_return std::nullopt; };
    runToTheEnd();
    EXPECT_EQ(logged().first(), u"info: Naming: each track after itself, formatted as dotnumber."_s);
    EXPECT_EQ(files(), (QStringList{u"01. Hill.mp3"_s, u"Tracklist.txt"_s}));
}

TEST_F(RunStageTest, twoTracksWhoseNewNamesCollideGetDifferentStems)
{
    useFolder({u"001 - Ocean.mp3"_s, u"002 - Ocean.mp3"_s});
    only(Stage::rename);
    runToTheEnd();
    EXPECT_EQ(files(), (QStringList{u"Ocean (2).mp3"_s, u"Ocean.mp3"_s, u"Tracklist.txt"_s}));
    EXPECT_EQ(run().renamedStems(),
              (QHash<QString, QString>{{u"001 - Ocean"_s, u"Ocean"_s}, {u"002 - Ocean"_s, u"Ocean (2)"_s}}));
    EXPECT_EQ(read(u"Tracklist.txt"_s), "01. Ocean\n02. Ocean");
}

TEST_F(RunStageTest, whatLiesAtATargetIsNotReplaced)
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

TEST_F(RunStageTest, tagsAreWrittenUnderTheNewStem)
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

TEST_F(RunStageTest, anEmptyGenreAndEmptyLyricsLeaveNoFrame)
{
    useFolder({u"Ocean.mp3"_s});
    only(Stage::tag);
    runToTheEnd();
    EXPECT_EQ(tagOf(u"Ocean.mp3"_s, "TCON"), "");
    EXPECT_EQ(tagOf(u"Ocean.mp3"_s, "USLT"), "");
}

TEST_F(RunStageTest, theAlbumIsTheSessionsFolderWhileTheFilesStayWhereTheRunBegan)
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

TEST_F(RunStageTest, aFileThatIsNoMp3IsPassedOverByTheTagsAndMastered)
{
    useFolder({u"Ocean.wav"_s});
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::tag), StageState::done(u"0 file(s)"_s));
    EXPECT_EQ(outcome(Stage::master), StageState::done(u"1 mastered for Spotify"_s));
}

TEST_F(RunStageTest, aFileThatCannotBeTaggedIsToldAndCounted)
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

TEST_F(RunStageTest, aFileThatCannotBeMasteredIsToldAndCounted)
{
    useFolder({u"Ocean.mp3"_s});
    write(u"Page.mp3"_s, "<html>");
    only(Stage::master);
    runToTheEnd();
    EXPECT_TRUE(logged().at(2).startsWith(u"error: Mastering failed for Page: ")) << logged().at(2).toStdString();
    EXPECT_EQ(outcome(Stage::master), StageState::done(u"1 mastered, 1 failed"_s));
    EXPECT_EQ(files(u"Mastered"_s), QStringList{u"Ocean.wav"_s});
}

TEST_F(RunStageTest, theMasteringTabIsAskedForTheTarget)
{
    useFolder({u"Ocean.mp3"_s});
    only(Stage::master);
    run().masteringProvider = [] { return MasteringTarget{Master::platforms()[2], Master::Format::flac}; };
    runToTheEnd();
    EXPECT_EQ(logged().first(), u"info: Mastering: Apple Music · FLAC, from the Mastering tab."_s);
    EXPECT_EQ(outcome(Stage::master), StageState::done(u"1 mastered for Apple Music"_s));
    EXPECT_EQ(files(u"Mastered"_s), QStringList{u"Ocean.flac"_s});
}

TEST_F(RunStageTest, aMasterTellsItsLoudnessBeforeAndAfter)
{
    useFolder({u"Ocean.mp3"_s});
    only(Stage::master);
    runToTheEnd();
    EXPECT_THAT(logged().at(1).toStdString(),
                testing::MatchesRegex("success: Ocean: -[0-9]+\\.[0-9] → -14\\.[0-9] LUFS, "
                                      "-[0-9]+\\.[0-9] dBTP( \\(limited\\))?"));
}

TEST_F(RunStageTest, aMasterIsWrittenAgainOnEachRun)
{
    useFolder({u"Ocean.mp3"_s});
    only(Stage::master);
    write(u"Mastered/Ocean.wav"_s, "old");
    runToTheEnd();
    EXPECT_TRUE(read(u"Mastered/Ocean.wav"_s).startsWith("RIFF"));
}

TEST_F(RunStageTest, aUsableWatermarkIsTold)
{
    useFolder({u"Ocean.mp3"_s});
    only(Stage::master);
    useWatermark();
    runToTheEnd();
    EXPECT_EQ(logged().at(1), u"info: Watermark: drop.mp3 at 12 dB under the music, Start and end only."_s);
}

TEST_F(RunStageTest, aTracklistThatCannotBeWrittenFailsTheRenameAndNotTheRun)
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

} // namespace
} // namespace orvane::test
