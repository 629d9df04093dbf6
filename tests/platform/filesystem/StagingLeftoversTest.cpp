#include "platform/filesystem/StagingLeftovers.h"

#include "platform/filesystem/AtomicFile.h"
#include "tests/support/TestFolder.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

struct RemoveStagingLeftovers : testing::Test
{
    TestFolder folder;
};

TEST_F(RemoveStagingLeftovers, takesTheStagedFilesAndNothingElse)
{
    folder.write(u"001 - Song.mp3.part"_s, "half");
    folder.write(u"001 - Song.png.part"_s, "");
    folder.write(u".Tracklist.txt.new"_s, "half");
    folder.write(u"001 - Song.mp3"_s, "whole");
    folder.write(u"film.mkv.part"_s, "somebody else's");
    folder.write(u".profile.new"_s, "somebody else's");
    EXPECT_EQ(removeStagingLeftovers(folder.path()), 3);
    EXPECT_EQ(folder.names(), (QStringList{u".profile.new"_s, u"001 - Song.mp3"_s, u"film.mkv.part"_s}));
}

TEST_F(RemoveStagingLeftovers, followsNoLinkAndTakesNone)
{
    const QString precious = folder.write(u"precious"_s, "untouched");
    QFile::link(precious, folder.path(u"a.mp3.part"_s));
    QFile::link(folder.path(u"nowhere"_s), folder.path(u"b.mp3.part"_s));
    EXPECT_EQ(removeStagingLeftovers(folder.path()), 0);
    EXPECT_EQ(folder.names(), (QStringList{u"a.mp3.part"_s, u"b.mp3.part"_s, u"precious"_s}));
    EXPECT_EQ(folder.read(u"precious"_s), "untouched");
}

TEST_F(RemoveStagingLeftovers, leavesFoldersAndPipesAlone)
{
    QDir().mkdir(folder.path(u"a.mp3.part"_s));
    ASSERT_EQ(::mkfifo(qPrintable(folder.path(u"b.mp3.part"_s)), 0600), 0);
    EXPECT_EQ(removeStagingLeftovers(folder.path()), 0);
    EXPECT_EQ(folder.names(), (QStringList{u"a.mp3.part"_s, u"b.mp3.part"_s}));
}

TEST_F(RemoveStagingLeftovers, doesNotDescend)
{
    QDir().mkdir(folder.path(u"Mastered"_s));
    folder.write(u"Mastered/.Song.wav.new"_s, "half");
    EXPECT_EQ(removeStagingLeftovers(folder.path()), 0);
    EXPECT_EQ(folder.read(u"Mastered/.Song.wav.new"_s), "half");
}

TEST_F(RemoveStagingLeftovers, leavesAFileThatIsBeingWritten)
{
    AtomicFile file(folder.path(u"Song.mp3"_s), folder.path(u"Song.mp3.part"_s));
    file.write("under way");
    EXPECT_EQ(removeStagingLeftovers(folder.path()), 0);
    file.commit();
    EXPECT_EQ(folder.read(u"Song.mp3"_s), "under way");
}

TEST_F(RemoveStagingLeftovers, findsNothingInAMissingFolder)
{
    EXPECT_EQ(removeStagingLeftovers(folder.path(u"missing"_s)), 0);
}

} // namespace
} // namespace orvane::test
