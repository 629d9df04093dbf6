#include "platform/filesystem/AtomicFile.h"

#include "tests/support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

struct AtomicFileTest : testing::Test
{
    TestFolder folder;
    QString song = folder.path(u"Song.wav"_s);
    QString staging = folder.path(u".Song.wav.new"_s);

    mode_t rightsOf(const QString& path) const
    {
        struct stat found = {};
        ::lstat(QFile::encodeName(path).constData(), &found);
        return found.st_mode & 07777;
    }
};

TEST_F(AtomicFileTest, appearsUnderItsFinalNameAtTheCommitAndNotBefore)
{
    AtomicFile file(song, staging);
    file.write("first ");
    file.write("second");
    EXPECT_EQ(folder.names(), QStringList{u".Song.wav.new"_s});
    file.commit();
    EXPECT_EQ(folder.names(), QStringList{u"Song.wav"_s});
    EXPECT_EQ(folder.read(u"Song.wav"_s), "first second");
}

TEST_F(AtomicFileTest, countsTheBytesWritten)
{
    AtomicFile file(song, staging);
    EXPECT_EQ(file.size(), 0);
    file.write("12345");
    file.write({});
    file.write("678");
    EXPECT_EQ(file.size(), 8);
}

TEST_F(AtomicFileTest, replacesTheFileThatIsThere)
{
    folder.write(u"Song.wav"_s, "a much longer old file");
    writeAtomically(song, "new");
    EXPECT_EQ(folder.read(u"Song.wav"_s), "new");
}

TEST_F(AtomicFileTest, canBeEmpty)
{
    writeAtomically(song, {});
    EXPECT_EQ(folder.names(), QStringList{u"Song.wav"_s});
    EXPECT_EQ(folder.read(u"Song.wav"_s), "");
}

TEST_F(AtomicFileTest, leavesNothingBehindWithoutACommit)
{
    folder.write(u"Song.wav"_s, "old");
    {
        AtomicFile file(song, staging);
        file.write("half of the new");
    }
    EXPECT_EQ(folder.names(), QStringList{u"Song.wav"_s});
    EXPECT_EQ(folder.read(u"Song.wav"_s), "old");
}

TEST_F(AtomicFileTest, isGoneAfterADiscardAndASecondOneDoesNothing)
{
    AtomicFile file(song, staging);
    file.write("half");
    file.discard();
    EXPECT_TRUE(folder.names().isEmpty());
    folder.write(u".Song.wav.new"_s, "somebody else's by now");
    file.discard();
    EXPECT_EQ(folder.names(), QStringList{u".Song.wav.new"_s});
}

TEST_F(AtomicFileTest, takesNothingMoreAfterADiscard)
{
    AtomicFile file(song, staging);
    file.discard();
    EXPECT_EQ(errorOf([&] { file.write("late"); }), EBADF);
    EXPECT_EQ(errorOf([&] { file.commit(); }), EBADF);
    EXPECT_TRUE(folder.names().isEmpty());
}

TEST_F(AtomicFileTest, destroyedAfterItsCommitKeepsTheFile)
{
    {
        AtomicFile file(song, staging);
        file.write("whole");
        file.commit();
        file.discard();
    }
    EXPECT_EQ(folder.read(u"Song.wav"_s), "whole");
}

TEST_F(AtomicFileTest, replacesALeftoverOfAKilledRun)
{
    folder.write(u".Song.wav.new"_s, "a leftover that is longer than the new file");
    writeAtomically(song, "new");
    EXPECT_EQ(folder.read(u"Song.wav"_s), "new");
    EXPECT_EQ(folder.names(), QStringList{u"Song.wav"_s});
}

TEST_F(AtomicFileTest, writesThroughNoLinkThatLiesAtTheTemporaryName)
{
    const QString precious = folder.write(u"precious"_s, "untouched");
    QFile::link(precious, staging);
    writeAtomically(song, "new");
    EXPECT_EQ(folder.read(u"precious"_s), "untouched");
    EXPECT_FALSE(QFileInfo(song).isSymLink());
    EXPECT_EQ(folder.read(u"Song.wav"_s), "new");
}

TEST_F(AtomicFileTest, writesIntoNoOtherNameOfALeftover)
{
    folder.write(u"precious"_s, "untouched");
    ASSERT_EQ(::link(qPrintable(folder.path(u"precious"_s)), qPrintable(staging)), 0);
    writeAtomically(song, "new");
    EXPECT_EQ(folder.read(u"precious"_s), "untouched");
}

TEST_F(AtomicFileTest, doesNotWaitAtAPipeThatLiesAtTheTemporaryName)
{
    ASSERT_EQ(::mkfifo(qPrintable(staging), 0600), 0);
    writeAtomically(song, "new");
    EXPECT_EQ(folder.read(u"Song.wav"_s), "new");
}

TEST_F(AtomicFileTest, isRefusedByAFolderAtTheTemporaryName)
{
    QDir().mkdir(staging);
    EXPECT_EQ(errorOf([&] { writeAtomically(song, "new"); }), EISDIR);
    EXPECT_EQ(folder.names(), QStringList{u".Song.wav.new"_s});
}

TEST_F(AtomicFileTest, saysThatTheTargetIsAFolder)
{
    QDir().mkdir(song);
    try {
        AtomicFile file(song, staging);
        FAIL() << "a folder was taken for a target";
    } catch (const FileError& error) {
        EXPECT_EQ(error.sentence(), u"Song.wav: Is a directory"_s);
    }
    EXPECT_EQ(folder.names(), QStringList{u"Song.wav"_s});
}

TEST_F(AtomicFileTest, saysThatTheTargetBecameAFolderMeanwhile)
{
    AtomicFile file(song, staging);
    file.write("new");
    QDir().mkdir(song);
    EXPECT_EQ(errorOf([&] { file.commit(); }), EISDIR);
    EXPECT_EQ(folder.names(), QStringList{u"Song.wav"_s});
}

TEST_F(AtomicFileTest, replacesALinkAndLeavesAloneWhatItPointsTo)
{
    const QString original = folder.write(u"original"_s, "the user's");
    QFile::link(original, song);
    writeAtomically(song, "new");
    EXPECT_EQ(folder.read(u"original"_s), "the user's");
    EXPECT_FALSE(QFileInfo(song).isSymLink());
    EXPECT_EQ(folder.read(u"Song.wav"_s), "new");
}

TEST_F(AtomicFileTest, replacesALinkToAFolder)
{
    QDir().mkdir(folder.path(u"elsewhere"_s));
    QFile::link(folder.path(u"elsewhere"_s), song);
    writeAtomically(song, "new");
    EXPECT_EQ(folder.read(u"Song.wav"_s), "new");
    EXPECT_TRUE(QDir(folder.path(u"elsewhere"_s)).isEmpty());
}

TEST_F(AtomicFileTest, replacesAPipeWithoutWaitingAtIt)
{
    ASSERT_EQ(::mkfifo(qPrintable(song), 0600), 0);
    writeAtomically(song, "new");
    EXPECT_TRUE(QFileInfo(song).isFile());
    EXPECT_EQ(folder.read(u"Song.wav"_s), "new");
}

TEST_F(AtomicFileTest, refusesANameWithANul)
{
    const QString cut = song + QChar(u'\0') + u".txt"_s;
    EXPECT_EQ(errorOf([&] { AtomicFile file(cut, staging); }), EINVAL);
    EXPECT_EQ(errorOf([&] { AtomicFile file(song, staging + QChar(u'\0')); }), EINVAL);
    EXPECT_EQ(errorOf([&] { writeAtomically(cut, "new"); }), EINVAL);
    EXPECT_EQ(errorOf([&] { installStaged(staging, cut); }), EINVAL);
    EXPECT_TRUE(folder.names().isEmpty());
}

TEST_F(AtomicFileTest, namesTheFinalFileInItsErrors)
{
    const QString missing = folder.path(u"missing/Song.wav"_s);
    try {
        writeAtomically(missing, "new");
        FAIL() << "a file was written into a missing folder";
    } catch (const FileError& error) {
        EXPECT_EQ(error.path(), missing);
        EXPECT_EQ(error.sentence(), u"Song.wav: No such file or directory"_s);
    }
}

TEST_F(AtomicFileTest, failsCleanlyWhereItsFolderVanishes)
{
    const QString gone = folder.path(u"gone"_s);
    QDir().mkdir(gone);
    AtomicFile file(gone + u"/Song.wav"_s, gone + u"/.Song.wav.new"_s);
    file.write("new");
    QDir(gone).removeRecursively();
    EXPECT_EQ(errorOf([&] { file.commit(); }), ENOENT);
}

TEST_F(AtomicFileTest, replacesANameThatLeavesRoomForItsSibling)
{
    const QString longest = folder.path(QString(250, u'n'));
    writeAtomically(longest, "old");
    writeAtomically(longest, "new");
    EXPECT_EQ(folder.read(QString(250, u'n')), "new");
}

TEST_F(AtomicFileTest, saysThatANameIsTooLongForItsSibling)
{
    EXPECT_EQ(errorOf([&] { writeAtomically(folder.path(QString(251, u'n')), "new"); }), ENAMETOOLONG);
    EXPECT_TRUE(folder.names().isEmpty());
}

TEST_F(AtomicFileTest, keepsTheRightsOfTheFileItReplaces)
{
    folder.write(u"Song.wav"_s, "old");
    ASSERT_EQ(::chmod(qPrintable(song), 0640), 0);
    writeAtomically(song, "new");
    EXPECT_EQ(rightsOf(song), 0640u);
}

TEST_F(AtomicFileTest, givesANewFileTheRightsOfTheMask)
{
    const mode_t before = ::umask(027);
    writeAtomically(song, "new");
    ::umask(before);
    EXPECT_EQ(rightsOf(song), 0640u);
}

TEST_F(AtomicFileTest, isForItsOwnerAloneFromTheFirstByteOn)
{
    folder.write(u"Song.wav"_s, "old, for everybody");
    ASSERT_EQ(::chmod(qPrintable(song), 0644), 0);
    AtomicFile file(song, staging, FileAccess::OwnerOnly);
    EXPECT_EQ(rightsOf(staging), 0600u);
    file.commit();
    EXPECT_EQ(rightsOf(song), 0600u);
}

TEST_F(AtomicFileTest, refusesASecondWriterOfTheSameFile)
{
    AtomicFile first(song, staging);
    first.write("the first one's");
    EXPECT_EQ(errorOf([&] { AtomicFile second(song, staging); }), EBUSY);
    first.write(" bytes");
    first.commit();
    EXPECT_EQ(folder.read(u"Song.wav"_s), "the first one's bytes");
    EXPECT_EQ(folder.names(), QStringList{u"Song.wav"_s});
}

TEST_F(AtomicFileTest, letsASecondWriterInAfterTheFirst)
{
    {
        AtomicFile first(song, staging);
        first.write("first");
        first.commit();
        AtomicFile second(song, staging);
        second.write("second");
        second.commit();
    }
    EXPECT_EQ(folder.read(u"Song.wav"_s), "second");
}

TEST_F(AtomicFileTest, writesMoreThanAPageWholeAndInOrder)
{
    QByteArray bytes(3'000'001, '\0');
    for (qsizetype index = 0; index < bytes.size(); ++index)
        bytes[index] = char(index * 31 + index / 251);
    AtomicFile file(song, staging);
    for (qsizetype from = 0; from < bytes.size(); from += 65'521)
        file.write(QByteArrayView(bytes).sliced(from, std::min<qsizetype>(65'521, bytes.size() - from)));
    file.commit();
    EXPECT_TRUE(folder.read(u"Song.wav"_s) == bytes);
}

} // namespace
} // namespace orvane::test
