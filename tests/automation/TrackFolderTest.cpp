#include "automation/TrackFolder.h"

#include "tests/support/TestFolder.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>
#include <ostream>

namespace orvane {

void PrintTo(const SavedTrack& track, std::ostream* out)
{
    *out << track.base.toStdString() << " titled " << track.clip.title.toStdString();
}

} // namespace orvane

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Belongs, theStemAloneDoes)
{
    EXPECT_TRUE(belongs(u"Song"_s, u"Song"_s));
}

TEST(Belongs, theStemWithOneExtensionDoes)
{
    EXPECT_TRUE(belongs(u"Song.mp3"_s, u"Song"_s));
    EXPECT_TRUE(belongs(u"Song.lrc"_s, u"Song"_s));
    EXPECT_TRUE(belongs(u"Song."_s, u"Song"_s));
}

TEST(Belongs, theStemWithTwoExtensionsDoesNot)
{
    EXPECT_FALSE(belongs(u"Song.old.mp3"_s, u"Song"_s));
}

TEST(Belongs, theLyricsFileDoes)
{
    EXPECT_TRUE(belongs(u"Song lyrics.txt"_s, u"Song"_s));
    EXPECT_TRUE(belongs(u"Song lyrics.text"_s, u"Song"_s));
}

TEST(Belongs, aLyricsFileOfAnotherKindDoesNot)
{
    EXPECT_FALSE(belongs(u"Song lyrics.lrc"_s, u"Song"_s));
    EXPECT_FALSE(belongs(u"Song lyrics.TXT"_s, u"Song"_s));
    EXPECT_FALSE(belongs(u"Song lyrics"_s, u"Song"_s));
}

TEST(Belongs, anotherTrackWhoseNameBeginsAlikeDoesNot)
{
    EXPECT_FALSE(belongs(u"Song 2.mp3"_s, u"Song"_s));
    EXPECT_FALSE(belongs(u"Songs.mp3"_s, u"Song"_s));
}

TEST(Belongs, caseCounts)
{
    EXPECT_FALSE(belongs(u"song.mp3"_s, u"Song"_s));
}

class FolderListingTest : public testing::Test
{
protected:
    TestFolder folder;
};

TEST_F(FolderListingTest, findsTheFilesOfAStem)
{
    for (const QString& name : {u"Song.mp3"_s, u"Song lyrics.txt"_s, u"Song.old.mp3"_s, u"Song 2.mp3"_s, u"Son.mp3"_s})
        folder.write(name, "x");
    EXPECT_EQ(FolderListing::of(folder.path()).belongingTo(u"Song"_s),
              (QStringList{u"Song lyrics.txt"_s, u"Song.mp3"_s}));
}

TEST_F(FolderListingTest, leavesFoldersAndHiddenFilesOut)
{
    folder.write(u"Song.d/inner"_s, "x");
    folder.write(u".Song.mp3"_s, "x");
    EXPECT_THAT(FolderListing::of(folder.path()).belongingTo(u"Song"_s), IsEmpty());
    EXPECT_THAT(FolderListing::of(folder.path()).belongingTo(u".Song"_s), IsEmpty());
}

TEST_F(FolderListingTest, prefersAnMp3)
{
    for (const QString& name : {u"Song.m4a"_s, u"Song.wav"_s, u"Song.MP3"_s})
        folder.write(name, "x");
    EXPECT_EQ(FolderListing::of(folder.path()).audio(u"Song"_s), folder.path(u"Song.MP3"_s));
}

TEST_F(FolderListingTest, takesNoOtherKindOfAudio)
{
    folder.write(u"Song.flac"_s, "x");
    EXPECT_EQ(FolderListing::of(folder.path()).audio(u"Song"_s), std::nullopt);
}

TEST_F(FolderListingTest, findsThePictureOfAStem)
{
    folder.write(u"Song.webp"_s, "x");
    EXPECT_EQ(FolderListing::of(folder.path()).artwork(u"Song"_s), folder.path(u"Song.webp"_s));
    folder.write(u"Song.jpeg"_s, "x");
    EXPECT_EQ(FolderListing::of(folder.path()).artwork(u"Song"_s), folder.path(u"Song.jpeg"_s));
    EXPECT_EQ(FolderListing::of(folder.path()).artwork(u"Other"_s), std::nullopt);
}

TEST_F(FolderListingTest, ofAFolderThatIsGoneIsEmpty)
{
    EXPECT_EQ(FolderListing::of(folder.path(u"gone"_s)).audio(u"Song"_s), std::nullopt);
}

class TracksOnDisk : public FolderListingTest
{
protected:
    QStringList titles() const
    {
        QStringList titles;
        for (const SavedTrack& track : tracksOnDisk(folder.path()))
            titles.append(track.clip.title);
        return titles;
    }
};

TEST_F(TracksOnDisk, areTitledByTheirNamesWithoutTheNumber)
{
    folder.write(u"007 - Song.mp3"_s, "x");
    const Clip expected{.id = u"local:007 - Song"_s, .title = u"Song"_s};
    EXPECT_THAT(tracksOnDisk(folder.path()), ElementsAre(SavedTrack{expected, u"007 - Song"_s}));
}

TEST_F(TracksOnDisk, lastThreeMinutesAndHaveNoAddresses)
{
    folder.write(u"Song.mp3"_s, "x");
    const Clip clip = tracksOnDisk(folder.path()).value(0).clip;
    EXPECT_EQ(clip.durationSeconds, 180.0);
    EXPECT_EQ(clip.audioURL, std::nullopt);
    EXPECT_EQ(clip.imageURL, std::nullopt);
}

TEST_F(TracksOnDisk, takeTitleLyricsAndTagsFromTheLyricsFile)
{
    folder.write(u"Song.mp3"_s, "x");
    folder.write(u"Song lyrics.txt"_s, "Title: Real\nTags: pop, slow\n\none\ntwo");
    const Clip clip = tracksOnDisk(folder.path()).value(0).clip;
    EXPECT_EQ(clip.title, u"Real"_s);
    EXPECT_EQ(clip.tags, u"pop, slow"_s);
    EXPECT_EQ(clip.lyrics, u"one\ntwo"_s);
}

TEST_F(TracksOnDisk, keepTheirOwnTitleWhereTheLyricsFileHasNone)
{
    folder.write(u"Song.mp3"_s, "x");
    folder.write(u"Song lyrics.txt"_s, "one\ntwo");
    const Clip clip = tracksOnDisk(folder.path()).value(0).clip;
    EXPECT_EQ(clip.title, u"Song"_s);
    EXPECT_EQ(clip.lyrics, u"one\ntwo"_s);
}

TEST_F(TracksOnDisk, doNotMindALyricsFileThatIsNoText)
{
    folder.write(u"Song.mp3"_s, "x");
    folder.write(u"Song lyrics.txt"_s, "Title: Bad\n\xff\xfe");
    const Clip clip = tracksOnDisk(folder.path()).value(0).clip;
    EXPECT_EQ(clip.title, u"Song"_s);
    EXPECT_EQ(clip.lyrics, QString());
}

TEST_F(TracksOnDisk, doNotReadALyricsFileOfFiftyMegabytes)
{
    folder.write(u"Song.mp3"_s, "x");
    folder.write(u"Song lyrics.txt"_s, "Title: Huge\n\n" + QByteArray(50 * 1024 * 1024, 'l'));
    const Clip clip = tracksOnDisk(folder.path()).value(0).clip;
    EXPECT_EQ(clip.title, u"Song"_s);
    EXPECT_EQ(clip.lyrics, QString());
}

TEST_F(TracksOnDisk, areOnlyThoseWithAudio)
{
    folder.write(u"Song.mp3"_s, "x");
    folder.write(u"Cover.jpg"_s, "x");
    folder.write(u"Words lyrics.txt"_s, "x");
    EXPECT_EQ(titles(), QStringList{u"Song"_s});
}

TEST_F(TracksOnDisk, comeInNaturalOrder)
{
    for (const QString& name : {u"Take 10.mp3"_s, u"Take 2.mp3"_s, u"take 1.mp3"_s})
        folder.write(name, "x");
    EXPECT_EQ(titles(), (QStringList{u"take 1"_s, u"Take 2"_s, u"Take 10"_s}));
}

TEST_F(TracksOnDisk, areNoneInAFolderThatIsGone)
{
    EXPECT_THAT(tracksOnDisk(folder.path(u"gone"_s)), IsEmpty());
}

class SelectedTrack : public FolderListingTest
{
protected:
    QStringList bases(const QString& selected) const
    {
        QStringList bases;
        for (const SavedTrack& track : selectedTrackOnDisk(folder.path(), selected))
            bases.append(track.base);
        return bases;
    }
};

TEST_F(SelectedTrack, isTheOneWhoseFilesBelongToTheAudio)
{
    for (const QString& name : {u"Song.mp3"_s, u"Song lyrics.txt"_s, u"Song 2.mp3"_s, u"Song.old.mp3"_s})
        folder.write(name, "x");
    EXPECT_EQ(bases(folder.path(u"Song.mp3"_s)), QStringList{u"Song"_s});
    EXPECT_EQ(bases(folder.path(u"Song.old.mp3"_s)), QStringList{u"Song.old"_s});
}

TEST_F(SelectedTrack, isNoneForAFileOfAnotherFolder)
{
    const TestFolder elsewhere;
    folder.write(u"Song.mp3"_s, "x");
    elsewhere.write(u"Song.mp3"_s, "x");
    EXPECT_THAT(bases(elsewhere.path(u"Song.mp3"_s)), IsEmpty());
}

TEST_F(SelectedTrack, isFoundThroughALinkToTheFolder)
{
    folder.write(u"in/Song.mp3"_s, "x");
    ASSERT_TRUE(QFile::link(folder.path(u"in"_s), folder.path(u"link"_s)));
    EXPECT_EQ(selectedTrackOnDisk(folder.path(u"link"_s), folder.path(u"in/Song.mp3"_s)).size(), 1);
}

TEST_F(SelectedTrack, isFoundFromItsMasterBelowTheFolder)
{
    folder.write(u"Song.mp3"_s, "x");
    folder.write(u"Mastered/Song.wav"_s, "x");
    EXPECT_EQ(bases(folder.path(u"Mastered/Song.wav"_s)), QStringList{u"Song"_s});
}

TEST_F(SelectedTrack, isNoneWhereItsFileHasGone)
{
    folder.write(u"Song.mp3"_s, "x");
    EXPECT_THAT(bases(folder.path(u"Gone.mp3"_s)), IsEmpty());
}

} // namespace
} // namespace orvane::test
