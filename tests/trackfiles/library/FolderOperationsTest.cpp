#include "trackfiles/library/FolderOperations.h"

#include "tests/support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <gtest/gtest.h>
#include <unistd.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;
using Library::CopiedIn;
using Library::NewFolder;
using test::TestFolder;

TEST(NewFolder, isMadeUnderItsSafeName)
{
    const TestFolder folder;
    EXPECT_EQ(Library::makeFolder(folder.path(), u" a/b "_s),
              (NewFolder{.path = folder.path(u"a_b"_s), .failure = {}, .problems = {}}));
    EXPECT_TRUE(QFileInfo(folder.path(u"a_b"_s)).isDir());
}

TEST(NewFolder, aNameOfWhichNothingRemainsMeansNoFolder)
{
    const TestFolder folder;
    EXPECT_EQ(Library::makeFolder(folder.path(), u" ... "_s), NewFolder{});
    EXPECT_EQ(folder.names(), QStringList());
}

TEST(NewFolder, isMadeWithWhatIsMissingAboveIt)
{
    const TestFolder folder;
    EXPECT_EQ(Library::makeFolder(folder.path(u"x/y"_s), u"z"_s).path, folder.path(u"x/y/z"_s));
}

TEST(NewFolder, whereAFileHasTheNameTheSystemsWordsSayWhy)
{
    const TestFolder folder;
    folder.write(u"taken"_s, "x");
    const NewFolder made = Library::makeFolder(folder.path(), u"taken"_s);
    EXPECT_FALSE(made.path.has_value());
    EXPECT_EQ(made.failure, u"File exists"_s);
    EXPECT_EQ(folder.read(u"taken"_s), "x");
}

TEST(NewFolderWithSelection, takesEveryFileOfEverySelectedTrackAndNoFolder)
{
    const TestFolder folder;
    for (const QString& name : {u"a.mp3"_s, u"a lyrics.txt"_s, u"b.mp3"_s, u"inner/c.mp3"_s})
        folder.write(name, "x");
    QList<Library::Entry> selection = Library::read(folder.path()).entries;
    selection.removeIf([](const Library::Entry& entry) { return entry.name == u"b"; });
    const NewFolder made = Library::makeFolderWith(folder.path(), u"New Folder"_s, selection);
    EXPECT_EQ(made, (NewFolder{.path = folder.path(u"New Folder"_s), .failure = {}, .problems = {}}));
    EXPECT_EQ(folder.names(), (QStringList{u"New Folder"_s, u"b.mp3"_s, u"inner"_s}));
    EXPECT_EQ(QDir(*made.path).entryList(QDir::Files, QDir::Name), (QStringList{u"a lyrics.txt"_s, u"a.mp3"_s}));
}

TEST(NewFolderWithSelection, withoutATrackNothingHappens)
{
    const TestFolder folder;
    folder.write(u"inner/c.mp3"_s, "x");
    EXPECT_EQ(Library::makeFolderWith(folder.path(), u"New"_s, Library::read(folder.path()).entries), NewFolder{});
    EXPECT_EQ(folder.names(), QStringList{u"inner"_s});
}

TEST(NewFolderWithSelection, whatLiesInTheFolderStaysAndIsNamed)
{
    const TestFolder folder;
    folder.write(u"a.mp3"_s, "new");
    folder.write(u"a.png"_s, "new");
    folder.write(u"Box/a.mp3"_s, "old");
    const NewFolder made = Library::makeFolderWith(folder.path(), u"Box"_s, Library::read(folder.path()).tracks());
    EXPECT_EQ(made.problems, QStringList{u"a.mp3 is already in there"_s});
    EXPECT_EQ(folder.read(u"Box/a.mp3"_s), "old");
    EXPECT_EQ(folder.read(u"a.mp3"_s), "new");
    EXPECT_EQ(folder.read(u"Box/a.png"_s), "new");
}

TEST(NewFolderWithSelection, aFileThatVanishedIsOneLineAndTheRestMoves)
{
    const TestFolder folder;
    folder.write(u"a.mp3"_s, "x");
    folder.write(u"a.png"_s, "x");
    const QList<Library::Entry> selection = Library::read(folder.path()).tracks();
    QFile::remove(folder.path(u"a.mp3"_s));
    EXPECT_EQ(Library::makeFolderWith(folder.path(), u"Box"_s, selection).problems,
              QStringList{u"a.mp3: No such file or directory"_s});
    EXPECT_TRUE(QFileInfo::exists(folder.path(u"Box/a.png"_s)));
}

TEST(Trash, holdsWhatWasMovedThere)
{
    // The trash of the home folder serves what lies on the home folder's file system.
    const QString place = QDir::homePath() + u"/trash-test"_s;
    ASSERT_TRUE(QDir().mkpath(place));
    QFile song(place + u"/to-the-trash.mp3"_s);
    ASSERT_TRUE(song.open(QFile::WriteOnly));
    song.write("music");
    song.close();
    const Library::Trashed trashed = Library::moveToTrash({song.fileName(), place + u"/gone.mp3"_s});
    EXPECT_EQ(trashed.items, 1);
    ASSERT_EQ(trashed.problems.size(), 1);
    EXPECT_TRUE(trashed.problems.first().startsWith(u"gone.mp3: "_s));
    EXPECT_FALSE(song.exists());
    const QString trash = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/Trash/files/"_s;
    QFile kept(trash + u"to-the-trash.mp3"_s);
    ASSERT_TRUE(kept.open(QFile::ReadOnly));
    EXPECT_EQ(kept.readAll(), "music");
}

TEST(ItemsOf, aTrackStandsForItsFilesAndAFolderForItself)
{
    const TestFolder folder;
    for (const QString& name : {u"a.mp3"_s, u"a.lrc"_s, u"inner/c.mp3"_s})
        folder.write(name, "x");
    EXPECT_EQ(Library::itemsOf(Library::read(folder.path()).entries),
              (QStringList{folder.path(u"inner"_s), folder.path(u"a.mp3"_s), folder.path(u"a.lrc"_s)}));
}

TEST(CopyIn, copiesAndNeverMoves)
{
    const TestFolder from;
    const TestFolder to;
    from.write(u"a.mp3"_s, "music");
    EXPECT_EQ(Library::copyIn({from.path(u"a.mp3"_s)}, to.path()), (CopiedIn{.items = 1, .problems = {}}));
    EXPECT_EQ(from.read(u"a.mp3"_s), "music");
    EXPECT_EQ(to.read(u"a.mp3"_s), "music");
    EXPECT_EQ(to.names(), QStringList{u"a.mp3"_s});
}

TEST(CopyIn, aFolderComesWithAllThatIsInItAndLinksStayLinks)
{
    const TestFolder from;
    const TestFolder to;
    from.write(u"album/inner/a.mp3"_s, "music");
    ASSERT_EQ(::symlink("..", QFile::encodeName(from.path(u"album/inner/up"_s)).constData()), 0);
    EXPECT_EQ(Library::copyIn({from.path(u"album/"_s)}, to.path()).items, 1);
    EXPECT_EQ(to.read(u"album/inner/a.mp3"_s), "music");
    EXPECT_TRUE(QFileInfo(to.path(u"album/inner/up"_s)).isSymLink());
    EXPECT_EQ(to.names(), QStringList{u"album"_s});
}

TEST(CopyIn, whatIsNothingToATrackIsNotTaken)
{
    const TestFolder from;
    const TestFolder to;
    EXPECT_EQ(Library::copyIn({from.write(u"notes.pdf"_s, "x")}, to.path()), CopiedIn{});
    EXPECT_EQ(to.names(), QStringList());
}

TEST(CopyIn, whatLiesHereAlreadyIsNamedAndStays)
{
    const TestFolder from;
    const TestFolder to;
    from.write(u"a.mp3"_s, "new");
    to.write(u"a.mp3"_s, "old");
    EXPECT_EQ(Library::copyIn({from.path(u"a.mp3"_s)}, to.path()),
              (CopiedIn{.items = 0, .problems = {u"a.mp3 is already here"_s}}));
    EXPECT_EQ(to.read(u"a.mp3"_s), "old");
}

TEST(CopyIn, anItemThatIsAlreadyAtThatPlaceIsPassedOver)
{
    const TestFolder folder;
    folder.write(u"a.mp3"_s, "x");
    EXPECT_EQ(Library::copyIn({folder.path(u"a.mp3"_s)}, folder.path()), CopiedIn{});
}

TEST(CopyIn, aFolderIsNotCopiedIntoItself)
{
    const TestFolder folder;
    folder.write(u"album/inner/a.mp3"_s, "x");
    const CopiedIn copied = Library::copyIn({folder.path(u"album"_s)}, folder.path(u"album/inner"_s));
    EXPECT_EQ(copied.items, 0);
    EXPECT_EQ(copied.problems, QStringList{u"album: Invalid argument"_s});
    EXPECT_EQ(QDir(folder.path(u"album/inner"_s)).entryList(QDir::NoDotAndDotDot | QDir::AllEntries),
              QStringList{u"a.mp3"_s});
}

} // namespace
} // namespace orvane
