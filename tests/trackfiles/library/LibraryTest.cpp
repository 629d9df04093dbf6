#include "trackfiles/library/Library.h"

#include "tests/support/TestFolder.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;
using Library::Asset;
using Library::Contents;
using Library::Entry;
using test::TestFolder;

QStringList names(const QList<Entry>& entries)
{
    QStringList result;
    for (const Entry& entry : entries)
        result.append(entry.name);
    return result;
}

void fill(const TestFolder& folder, const QStringList& files)
{
    for (const QString& file : files)
        folder.write(file, "x");
}

TEST(LibraryRead, sixFilesOfSongMakeOneTrackAndTheLastIsAudioBecauseOnlyAFolderNamedMasteredGivesMastered)
{
    const TestFolder folder;
    fill(folder,
         {u"Song.mp3"_s, u"Song.png"_s, u"Song.txt"_s, u"Song lyrics.txt"_s, u"Song.lrc"_s, u"Song (Spotify).wav"_s});
    const Contents contents = Library::read(folder.path());
    ASSERT_EQ(names(contents.entries), QStringList{u"Song"_s});
    const Entry& song = contents.entries.first();
    EXPECT_EQ(song.kind, Entry::Kind::track);
    EXPECT_EQ(song.has(), (QSet<Asset>{Asset::audio, Asset::artwork, Asset::lyrics, Asset::timed}));
    EXPECT_EQ(song.files[Asset::audio].size(), 2);
    EXPECT_EQ(song.files[Asset::lyrics].size(), 2);
    EXPECT_EQ(song.allFiles().size(), 6);
    EXPECT_EQ(song.bytes, 6);
    EXPECT_EQ(contents.bytes(), 6);
    EXPECT_TRUE(song.allFiles().contains(song.path));
    EXPECT_FALSE(song.duration.has_value());
}

TEST(LibraryRead, songRemixStandsBesideSongAsASecondTrack)
{
    const TestFolder folder;
    fill(folder, {u"Song.mp3"_s, u"Song (Remix).mp3"_s});
    EXPECT_EQ(names(Library::read(folder.path()).tracks()), (QStringList{u"Song"_s, u"Song (Remix)"_s}));
}

TEST(LibraryRead, aNotesPdfIsNotListedAtAllAndAddsNothingToBytes)
{
    const TestFolder folder;
    folder.write(u"notes.pdf"_s, QByteArray(1000, 'x'));
    folder.write(u"Song.mp3"_s, "12345");
    const Contents contents = Library::read(folder.path());
    EXPECT_EQ(names(contents.entries), QStringList{u"Song"_s});
    EXPECT_EQ(contents.bytes(), 5);
}

TEST(LibraryRead, inAFolderCalledVideosAnMp3IsIgnored)
{
    const TestFolder folder;
    fill(folder, {u"Videos/Song.mp4"_s, u"Videos/Song.mp3"_s});
    const Contents contents = Library::read(folder.path(u"Videos"_s));
    ASSERT_EQ(contents.entries.size(), 1);
    EXPECT_EQ(contents.entries.first().has(), QSet<Asset>{Asset::video});
}

TEST(LibraryRead, inAFolderCalledMasteredAnMp3OrAJpgIsIgnored)
{
    const TestFolder folder;
    fill(folder, {u"Mastered/Song.mp3"_s, u"Mastered/Song.jpg"_s, u"Mastered/Song.flac"_s});
    const Contents contents = Library::read(folder.path(u"Mastered/"_s));
    ASSERT_EQ(contents.entries.size(), 1);
    EXPECT_EQ(contents.entries.first().has(), QSet<Asset>{Asset::mastered});
}

TEST(LibraryRead, anUpperCaseExtensionIsClassifiedLikeALowerCaseOneAndStemsThatDifferOnlyInCaseGiveTwoTracks)
{
    const TestFolder folder;
    fill(folder, {u"SONG.MP3"_s, u"song.mp3"_s});
    const QList<Entry> tracks = Library::read(folder.path()).tracks();
    EXPECT_EQ(names(tracks), (QStringList{u"song"_s, u"SONG"_s}));
    EXPECT_EQ(tracks.last().has(), QSet<Asset>{Asset::audio});
}

TEST(LibraryRead, aFolderOfOnlyPicturesHasTracksWithoutAudioAndMissingHoldsAudioOnly)
{
    const TestFolder folder;
    fill(folder, {u"a.jpg"_s, u"b.webp"_s});
    EXPECT_EQ(Library::read(folder.path()).missing, QList<Asset>{Asset::audio});
}

TEST(LibraryRead, aFolderOfLyricsMissesAudioThenArtwork)
{
    const TestFolder folder;
    fill(folder, {u"a.txt"_s});
    EXPECT_EQ(Library::read(folder.path()).missing, (QList<Asset>{Asset::audio, Asset::artwork}));
}

TEST(LibraryRead, oneTrackWithAPictureIsEnoughForNoneToBeMissing)
{
    const TestFolder folder;
    fill(folder, {u"a.mp3"_s, u"b.mp3"_s, u"b.png"_s});
    EXPECT_EQ(Library::read(folder.path()).missing, QList<Asset>{});
}

TEST(LibraryRead, anEmptyFolderHasNoEntriesAndMissingEmpty)
{
    const TestFolder folder;
    EXPECT_EQ(Library::read(folder.path()), Contents{});
}

TEST(LibraryRead, aFolderThatDoesNotExistReadsAsAnEmptyOne)
{
    const TestFolder folder;
    EXPECT_EQ(Library::read(folder.path(u"gone"_s)), Contents{});
}

TEST(LibraryRead, aFileInPlaceOfTheFolderIsUnreadable)
{
    const TestFolder folder;
    fill(folder, {u"Song.mp3"_s});
    EXPECT_TRUE(Library::read(folder.path(u"Song.mp3"_s)).unreadable);
}

TEST(LibraryRead, hiddenFilesAmongThemLeftoversNamedTaggingNeverShow)
{
    const TestFolder folder;
    fill(folder, {u".Song.mp3"_s, u".Song.mp3.tagging"_s, u".folder/x.mp3"_s, u"inner/.a.mp3"_s, u"inner/b.mp3"_s});
    const Contents contents = Library::read(folder.path());
    ASSERT_EQ(names(contents.entries), QStringList{u"inner"_s});
    EXPECT_EQ(contents.entries.first().childCount, 1);
}

TEST(LibraryRead, foldersComeFirstAndNumbersCountByTheirValue)
{
    const TestFolder folder;
    fill(folder,
         {u"Track 10.mp3"_s, u"track 2.mp3"_s, u"Track 1.mp3"_s, u"zoo/a.mp3"_s, u"Art 12/a.mp3"_s, u"Art 3/a.mp3"_s});
    EXPECT_EQ(names(Library::read(folder.path()).entries),
              (QStringList{u"Art 3"_s, u"Art 12"_s, u"zoo"_s, u"Track 1"_s, u"track 2"_s, u"Track 10"_s}));
}

TEST(LibraryRead, aFolderRowHasItsDateAndItsChildren)
{
    const TestFolder folder;
    fill(folder, {u"inner/a.mp3"_s, u"inner/b.pdf"_s});
    const Entry inner = Library::read(folder.path()).folders().first();
    EXPECT_EQ(inner.kind, Entry::Kind::folder);
    EXPECT_EQ(inner.path, folder.path(u"inner"_s));
    EXPECT_EQ(inner.childCount, 2);
    EXPECT_EQ(inner.bytes, 0);
    EXPECT_TRUE(inner.files.isEmpty());
    EXPECT_EQ(inner.modified, QFileInfo(inner.path).lastModified());
}

TEST(LibraryRead, aTrackIsAsNewAsTheNewestOfItsFiles)
{
    const TestFolder folder;
    fill(folder, {u"Song.mp3"_s, u"Song.png"_s});
    const timespec old[2] = {{.tv_sec = 1000, .tv_nsec = 0}, {.tv_sec = 1000, .tv_nsec = 0}};
    const timespec recent[2] = {{.tv_sec = 5000, .tv_nsec = 0}, {.tv_sec = 5000, .tv_nsec = 0}};
    ::utimensat(AT_FDCWD, QFile::encodeName(folder.path(u"Song.png"_s)).constData(), old, 0);
    ::utimensat(AT_FDCWD, QFile::encodeName(folder.path(u"Song.mp3"_s)).constData(), recent, 0);
    EXPECT_EQ(Library::read(folder.path()).tracks().first().modified.toSecsSinceEpoch(), 5000);
}

TEST(Crumbs, aLimitOf3OnADeepPathShowsTheLast3Components)
{
    EXPECT_EQ(Library::crumbs(u"/a/b/c/d/e"_s, 3), u"c › d › e"_s);
    EXPECT_EQ(Library::crumbs(u"/a/b"_s, 3), u"a › b"_s);
    EXPECT_EQ(Library::crumbs(u"/"_s, 3), QString());
    EXPECT_EQ(Library::crumbs(u"/a/b"_s, 0), QString());
}

} // namespace
} // namespace orvane
