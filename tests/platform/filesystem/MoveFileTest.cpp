#include "platform/filesystem/MoveFile.h"

#include "tests/support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <csignal>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

dev_t fileSystemOf(const QString& path)
{
    struct stat found = {};
    ::stat(qPrintable(path), &found);
    return found.st_dev;
}

struct MoveFile : testing::Test
{
    TestFolder folder;
    QString from = folder.write(u"Song.mp3"_s, "music");
    QString to = folder.path(u"001 - Song.mp3"_s);
};

TEST_F(MoveFile, givesAFileItsNewName)
{
    moveWithoutReplacing(from, to);
    EXPECT_EQ(folder.names(), QStringList{u"001 - Song.mp3"_s});
    EXPECT_EQ(folder.read(u"001 - Song.mp3"_s), "music");
}

TEST_F(MoveFile, neverReplacesWhatIsThere)
{
    folder.write(u"001 - Song.mp3"_s, "somebody's");
    try {
        moveWithoutReplacing(from, to);
        FAIL() << "a file was replaced";
    } catch (const FileError& error) {
        EXPECT_EQ(error.sentence(), u"Song.mp3: File exists"_s);
    }
    EXPECT_EQ(folder.read(u"001 - Song.mp3"_s), "somebody's");
    EXPECT_EQ(folder.read(u"Song.mp3"_s), "music");
}

TEST_F(MoveFile, aTakenNameIsToldBeforeAMissingFile)
{
    folder.write(u"001 - Song.mp3"_s, "somebody's");
    EXPECT_EQ(errorOf([&] { moveWithoutReplacing(folder.path(u"missing"_s), to); }), EEXIST);
    EXPECT_EQ(folder.read(u"001 - Song.mp3"_s), "somebody's");
}

TEST_F(MoveFile, replacesNoLinkThatLeadsNowhere)
{
    QFile::link(folder.path(u"nowhere"_s), to);
    EXPECT_EQ(errorOf([&] { moveWithoutReplacing(from, to); }), EEXIST);
    EXPECT_TRUE(QFileInfo(to).isSymLink());
}

TEST_F(MoveFile, changesTheCaseOfAName)
{
    moveWithoutReplacing(from, folder.path(u"SONG.mp3"_s));
    EXPECT_EQ(folder.names(), QStringList{u"SONG.mp3"_s});
}

TEST_F(MoveFile, keepsATwinThatDiffersInCaseOnly)
{
    folder.write(u"SONG.mp3"_s, "the twin");
    EXPECT_EQ(errorOf([&] { moveWithoutReplacing(from, folder.path(u"SONG.mp3"_s)); }), EEXIST);
    EXPECT_EQ(folder.read(u"SONG.mp3"_s), "the twin");
}

TEST_F(MoveFile, saysThatTheFileOrTheFolderIsMissing)
{
    EXPECT_EQ(errorOf([&] { moveWithoutReplacing(folder.path(u"missing"_s), to); }), ENOENT);
    EXPECT_EQ(errorOf([&] { moveWithoutReplacing(from, folder.path(u"missing/Song.mp3"_s)); }), ENOENT);
    EXPECT_EQ(folder.read(u"Song.mp3"_s), "music");
}

TEST_F(MoveFile, refusesAFolderIntoItself)
{
    const QString album = folder.path(u"Album"_s);
    QDir().mkdir(album);
    EXPECT_EQ(errorOf([&] { moveWithoutReplacing(album, album + u"/Album"_s); }), EINVAL);
    EXPECT_EQ(errorOf([&] { copyWithoutReplacing(album, album + u"/Album"_s); }), EINVAL);
    EXPECT_TRUE(QDir(album).isEmpty());
}

TEST_F(MoveFile, copiesAndLeavesTheOriginal)
{
    copyWithoutReplacing(from, to);
    EXPECT_EQ(folder.names(), (QStringList{u"001 - Song.mp3"_s, u"Song.mp3"_s}));
    EXPECT_EQ(folder.read(u"001 - Song.mp3"_s), "music");
}

TEST_F(MoveFile, copiesOverNothing)
{
    folder.write(u"001 - Song.mp3"_s, "somebody's");
    EXPECT_EQ(errorOf([&] { copyWithoutReplacing(from, to); }), EEXIST);
    EXPECT_EQ(folder.read(u"001 - Song.mp3"_s), "somebody's");
}

TEST_F(MoveFile, copiesAFolderWithItsFilesAndItsLinksAsLinks)
{
    folder.write(u"Album/Disc/Song.mp3"_s, "deep");
    QFile::link(u"Disc/Song.mp3"_s, folder.path(u"Album/link.mp3"_s));
    QFile::link(u"nowhere"_s, folder.path(u"Album/broken.mp3"_s));
    copyWithoutReplacing(folder.path(u"Album"_s), folder.path(u"Copy"_s));
    EXPECT_EQ(folder.read(u"Copy/Disc/Song.mp3"_s), "deep");
    EXPECT_TRUE(QFileInfo(folder.path(u"Copy/link.mp3"_s)).isSymLink());
    EXPECT_TRUE(QFileInfo(folder.path(u"Copy/broken.mp3"_s)).isSymLink());
}

TEST_F(MoveFile, copiesTheRightsToo)
{
    folder.write(u"Album/Song.mp3"_s, "music");
    ASSERT_EQ(::chmod(qPrintable(folder.path(u"Album/Song.mp3"_s)), 0640), 0);
    ASSERT_EQ(::chmod(qPrintable(folder.path(u"Album"_s)), 0750), 0);
    copyWithoutReplacing(folder.path(u"Album"_s), folder.path(u"Copy"_s));
    EXPECT_EQ(int(QFile::permissions(folder.path(u"Copy/Song.mp3"_s))) & 0x77, 0x40);
    EXPECT_EQ(int(QFile::permissions(folder.path(u"Copy"_s))) & 0x77, 0x50);
}

TEST_F(MoveFile, copiesMoreThanABlockWhole)
{
    QByteArray bytes(1'000'003, '\0');
    for (qsizetype index = 0; index < bytes.size(); ++index)
        bytes[index] = char(index * 31 + index / 251);
    copyWithoutReplacing(folder.write(u"large.wav"_s, bytes), folder.path(u"copy.wav"_s));
    EXPECT_TRUE(folder.read(u"copy.wav"_s) == bytes);
}

TEST_F(MoveFile, copiesNoPipeAndNoFolderThatHoldsOne)
{
    QDir().mkdir(folder.path(u"Album"_s));
    const QString pipe = folder.path(u"Album/pipe"_s);
    ASSERT_EQ(::mkfifo(qPrintable(pipe), 0600), 0);
    EXPECT_EQ(errorOf([&] { copyWithoutReplacing(pipe, folder.path(u"copy"_s)); }), EINVAL);
    EXPECT_EQ(errorOf([&] { copyWithoutReplacing(folder.path(u"Album"_s), folder.path(u"copy"_s)); }), EINVAL);
    EXPECT_EQ(folder.names(), (QStringList{u"Album"_s, u"Song.mp3"_s}));
}

TEST_F(MoveFile, leavesNoHalfOfACopyThatTheDiskRefused)
{
    const QString large = folder.write(u"large.wav"_s, QByteArray(100'000, 'x'));
    const int code = inChild([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit half = {.rlim_cur = 50'000, .rlim_max = 50'000};
        ::setrlimit(RLIMIT_FSIZE, &half);
        return errorOf([&] { copyWithoutReplacing(large, folder.path(u"copy.wav"_s)); });
    });
    EXPECT_EQ(code, EFBIG);
    EXPECT_EQ(folder.names(), (QStringList{u"Song.mp3"_s, u"large.wav"_s}));
}

TEST_F(MoveFile, copiesOverALeftoverOfAKilledRun)
{
    folder.write(u".001 - Song.mp3.new"_s, "a leftover that is longer");
    copyWithoutReplacing(from, to);
    EXPECT_EQ(folder.names(), (QStringList{u"001 - Song.mp3"_s, u"Song.mp3"_s}));
    EXPECT_EQ(folder.read(u"001 - Song.mp3"_s), "music");
}

/// The machine's memory is a file system of its own.
struct MoveAcrossFileSystems : testing::Test
{
    TestFolder folder;
    QTemporaryDir memory{u"/dev/shm/orvane-test-XXXXXX"_s};
    QString there = memory.filePath(u"there"_s);

    MoveAcrossFileSystems() { EXPECT_NE(fileSystemOf(folder.path()), fileSystemOf(memory.path())); }

    QStringList names() const
    {
        return QDir(memory.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
};

TEST_F(MoveAcrossFileSystems, takesAFileOver)
{
    moveWithoutReplacing(folder.write(u"Song.mp3"_s, "music"), there);
    EXPECT_TRUE(folder.names().isEmpty());
    EXPECT_EQ(names(), QStringList{u"there"_s});
    moveWithoutReplacing(there, folder.path(u"back.mp3"_s));
    EXPECT_EQ(folder.read(u"back.mp3"_s), "music");
    EXPECT_TRUE(names().isEmpty());
}

TEST_F(MoveAcrossFileSystems, takesAFolderOverWithAllThatIsInIt)
{
    folder.write(u"Album/Disc/Song.mp3"_s, "deep");
    QFile::link(u"Disc/Song.mp3"_s, folder.path(u"Album/link.mp3"_s));
    moveWithoutReplacing(folder.path(u"Album"_s), there);
    EXPECT_TRUE(folder.names().isEmpty());
    QFile song(there + u"/link.mp3"_s);
    ASSERT_TRUE(song.open(QFile::ReadOnly));
    EXPECT_EQ(song.readAll(), "deep");
}

TEST_F(MoveAcrossFileSystems, keepsTheOriginalWhereTheNameIsTaken)
{
    const QString song = folder.write(u"Song.mp3"_s, "music");
    QDir().mkdir(there);
    EXPECT_EQ(errorOf([&] { moveWithoutReplacing(song, there); }), EEXIST);
    EXPECT_EQ(folder.read(u"Song.mp3"_s), "music");
    EXPECT_EQ(names(), QStringList{u"there"_s});
}

TEST_F(MoveAcrossFileSystems, keepsTheOriginalWhereTheDiskRefusesTheCopy)
{
    const QString large = folder.write(u"large.wav"_s, QByteArray(100'000, 'x'));
    const int code = inChild([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit half = {.rlim_cur = 50'000, .rlim_max = 50'000};
        ::setrlimit(RLIMIT_FSIZE, &half);
        return errorOf([&] { moveWithoutReplacing(large, there); });
    });
    EXPECT_EQ(code, EFBIG);
    EXPECT_EQ(folder.read(u"large.wav"_s).size(), 100'000);
    EXPECT_TRUE(names().isEmpty());
}

} // namespace
} // namespace orvane::test
