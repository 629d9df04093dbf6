#include "automation/TrackWork.h"

#include "tests/support/TestFolder.h"

#include <QDir>

#include <gmock/gmock.h>
#include <ostream>

namespace orvane::TrackWork {

void PrintTo(const NotRenamed& problem, std::ostream* out)
{
    *out << problem.file.toStdString() << " to " << problem.target.toStdString() << ": "
         << problem.reason.toStdString();
}

} // namespace orvane::TrackWork

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace TrackWork;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

SavedTrack titled(const QString& title)
{
    return {.clip = {.id = u"id"_s, .title = title}, .base = title};
}

TEST(Stems, areSafeForTheFileSystem)
{
    EXPECT_EQ(stemsFor({u"a/b:c"_s, u"..."_s}), (QStringList{u"a_b_c"_s, u"Track 2"_s}));
}

TEST(Stems, ofTwoTracksThatCollideDiffer)
{
    EXPECT_EQ(stemsFor({u"Ocean"_s, u"Ocean"_s, u"OCEAN"_s}),
              (QStringList{u"Ocean"_s, u"Ocean (2)"_s, u"OCEAN (3)"_s}));
}

TEST(Stems, takeTheFirstFreeNumber)
{
    EXPECT_EQ(stemsFor({u"Ocean"_s, u"Ocean (2)"_s, u"Ocean"_s}),
              (QStringList{u"Ocean"_s, u"Ocean (2)"_s, u"Ocean (3)"_s}));
}

TEST(Names, areThoseOfThePattern)
{
    EXPECT_EQ(namesOf({titled(u"One"_s), titled(u"Untitled"_s)}, u"numbered"_s),
              (QStringList{u"01 - One"_s, u"02 - Track 2"_s}));
}

class TrackFiles : public testing::Test
{
protected:
    TestFolder folder;
};

TEST_F(TrackFiles, allMoveToTheNewStem)
{
    const QStringList names{u"001 - Song.mp3"_s, u"001 - Song lyrics.txt"_s};
    for (const QString& name : names)
        folder.write(name, name.toUtf8());
    const Renamed result = renameFiles(folder.path(), names, u"001 - Song"_s, u"Song"_s);
    EXPECT_EQ(result, (Renamed{.moved = 2, .problems = {}}));
    EXPECT_EQ(folder.names(), (QStringList{u"Song lyrics.txt"_s, u"Song.mp3"_s}));
    EXPECT_EQ(folder.read(u"Song.mp3"_s), "001 - Song.mp3");
}

TEST_F(TrackFiles, stayWhereTheyHaveTheNameAlready)
{
    folder.write(u"Song.mp3"_s, "x");
    EXPECT_EQ(renameFiles(folder.path(), {u"Song.mp3"_s}, u"Song"_s, u"Song"_s), Renamed());
}

TEST_F(TrackFiles, doNotReplaceWhatIsThere)
{
    folder.write(u"001 - Song.mp3"_s, "new");
    folder.write(u"001 - Song.lrc"_s, "new");
    folder.write(u"Song.mp3"_s, "old");
    const Renamed result =
        renameFiles(folder.path(), {u"001 - Song.lrc"_s, u"001 - Song.mp3"_s}, u"001 - Song"_s, u"Song"_s);
    EXPECT_EQ(result.moved, 1);
    EXPECT_THAT(result.problems, ElementsAre(NotRenamed{u"001 - Song.mp3"_s, u"Song.mp3"_s, {}}));
    EXPECT_EQ(folder.read(u"Song.mp3"_s), "old");
    EXPECT_EQ(folder.read(u"001 - Song.mp3"_s), "new");
}

TEST_F(TrackFiles, thatHaveGoneAreTold)
{
    const Renamed result = renameFiles(folder.path(), {u"Song.mp3"_s}, u"Song"_s, u"Other"_s);
    EXPECT_THAT(result.problems,
                ElementsAre(NotRenamed{u"Song.mp3"_s, u"Other.mp3"_s, u"No such file or directory"_s}));
}

TEST_F(TrackFiles, moveWithTheRecordingsLast)
{
    const QStringList listed{u"Song.jpg"_s, u"Song.m4a"_s, u"Song.mp3"_s, u"Song.txt"_s, u"Song.wav"_s};
    QStringList inTurn;
    for (const NotRenamed& problem : renameFiles(folder.path(), listed, u"Song"_s, u"Other"_s).problems)
        inTurn.append(problem.file);
    EXPECT_EQ(inTurn, (QStringList{u"Song.jpg"_s, u"Song.txt"_s, u"Song.m4a"_s, u"Song.mp3"_s, u"Song.wav"_s}));
}

TEST_F(TrackFiles, aTracklistHasOneNumberedLineForEachName)
{
    EXPECT_EQ(writeTracklist({u"One"_s, u"Zwölf"_s}, folder.path()), QString());
    EXPECT_EQ(folder.read(u"Tracklist.txt"_s), "01. One\n02. Zwölf");
}

TEST_F(TrackFiles, aTracklistCountsBeyondTwoDigits)
{
    writeTracklist(QStringList(100, u"x"_s), folder.path());
    EXPECT_THAT(folder.read(u"Tracklist.txt"_s).toStdString(), HasSubstr("99. x\n100. x"));
}

TEST_F(TrackFiles, aTracklistThatCannotBeWrittenLeavesTheOldOne)
{
    folder.write(u"Tracklist.txt/in the way"_s, "x");
    EXPECT_EQ(writeTracklist({u"One"_s}, folder.path()), u"Tracklist.txt: Is a directory"_s);
    EXPECT_EQ(folder.names(), QStringList{u"Tracklist.txt"_s});
}

TEST_F(TrackFiles, aCoverThatCannotBeReadIsLeftOutOfTheTag)
{
    const QString audio = folder.write(u"Song.mp3"_s, "\xff\xfb\x90\x64 sound");
    folder.write(u"Song.jpg/in the way"_s, "x");
    TagOrder order{.audio = audio, .artwork = folder.path(u"Song.jpg"_s), .clip = {}, .album = u"A"_s};
    EXPECT_EQ(tagTrack(order), QString());
    EXPECT_FALSE(folder.read(u"Song.mp3"_s).contains("APIC"));
    EXPECT_TRUE(folder.read(u"Song.mp3"_s).endsWith(" sound"));
}

TEST_F(TrackFiles, aCoverThatIsNoPictureDoesNotKeepTheTagAway)
{
    const QString audio = folder.write(u"Song.mp3"_s, "\xff\xfb\x90\x64 sound");
    const QString cover = folder.write(u"Song.jpg"_s, "<html>not found</html>");
    EXPECT_EQ(tagTrack({.audio = audio, .artwork = cover, .clip = {}, .album = u"A"_s}), QString());
    EXPECT_TRUE(folder.read(u"Song.mp3"_s).contains("TIT2"));
    EXPECT_TRUE(folder.read(u"Song.mp3"_s).endsWith(" sound"));
}

TEST_F(TrackFiles, aWebpCoverIsNotCarriedIntoTheTag)
{
    const QString audio = folder.write(u"Song.mp3"_s, "\xff\xfb\x90\x64 sound");
    const QString cover = folder.write(u"Song.webp"_s, "RIFF");
    tagTrack({.audio = audio, .artwork = cover, .clip = {}, .album = u"A"_s});
    EXPECT_FALSE(folder.read(u"Song.mp3"_s).contains("APIC"));
}

TEST_F(TrackFiles, aPngCoverIsCalledOne)
{
    const QString audio = folder.write(u"Song.mp3"_s, "\xff\xfb\x90\x64 sound");
    const QString cover = folder.write(u"Song.PNG"_s, "picture");
    tagTrack({.audio = audio, .artwork = cover, .clip = {}, .album = u"A"_s});
    EXPECT_TRUE(folder.read(u"Song.mp3"_s).contains("image/png"));
    EXPECT_TRUE(folder.read(u"Song.mp3"_s).contains("picture"));
}

TEST_F(TrackFiles, whatIsNoMp3IsLeftAlone)
{
    const QString audio = folder.write(u"Song.mp3"_s, "<html>");
    EXPECT_EQ(tagTrack({.audio = audio, .artwork = {}, .clip = {}, .album = u"A"_s}),
              u"Song.mp3 does not look like an MP3, so it was left alone."_s);
    EXPECT_EQ(folder.read(u"Song.mp3"_s), "<html>");
}

TEST_F(TrackFiles, whatIsNoSoundIsNotMastered)
{
    const QString audio = folder.write(u"Song.mp3"_s, "<html>");
    const Mastered mastered = masterTrack({.audio = audio, .output = folder.path(u"Song.wav"_s)});
    EXPECT_FALSE(mastered.refusal.isEmpty());
    EXPECT_EQ(folder.names(), QStringList{u"Song.mp3"_s});
}

TEST_F(TrackFiles, aFolderIsMadeWithThoseAboveIt)
{
    EXPECT_EQ(makeFolder(folder.path(u"a/b"_s)), QString());
    EXPECT_EQ(makeFolder(folder.path(u"a/b"_s)), QString());
    EXPECT_TRUE(QDir(folder.path(u"a/b"_s)).exists());
}

TEST_F(TrackFiles, aFolderThatCannotBeMadeIsTold)
{
    folder.write(u"a"_s, "x");
    EXPECT_EQ(makeFolder(folder.path(u"a/b"_s)), u"b: Not a directory"_s);
}

TEST_F(TrackFiles, theFolderOfMastersIsNotMadeInAFolderThatIsGone)
{
    EXPECT_EQ(makeMasteredFolder(folder.path(u"gone"_s)), u"Mastered: No such file or directory"_s);
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST_F(TrackFiles, leftoversOfAKilledRunAreRemovedHereAndAmongMastersAndVideos)
{
    for (const QString& name :
         {u"001 - Song.mp3.part"_s, u".Song.mp3.tagging"_s, u".Tracklist.txt.new"_s, u"Mastered/.Song.wav.new"_s,
          u"Song.mp3"_s, u"Mastered/Song.wav"_s, u"Videos/.Song.mp4.new"_s, u"Videos/Song.mp4"_s})
        folder.write(name, "x");
    removeLeftovers(folder.path());
    EXPECT_EQ(folder.names(), (QStringList{u"Mastered"_s, u"Song.mp3"_s, u"Videos"_s}));
    EXPECT_EQ(QDir(folder.path(u"Mastered"_s)).entryList(QDir::Files | QDir::Hidden), QStringList{u"Song.wav"_s});
    EXPECT_EQ(QDir(folder.path(u"Videos"_s)).entryList(QDir::Files | QDir::Hidden), QStringList{u"Song.mp4"_s});
}

} // namespace
} // namespace orvane::test
