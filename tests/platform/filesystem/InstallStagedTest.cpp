#include "platform/filesystem/AtomicFile.h"
#include "tests/support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

struct InstallStaged : testing::Test
{
    TestFolder folder;
    QString song = folder.path(u"Song.wav"_s);
    QString staged = folder.write(u".Song.wav.new"_s, "new");
};

TEST_F(InstallStaged, movesTheFinishedFileToItsFinalName)
{
    installStaged(staged, song);
    EXPECT_EQ(folder.names(), QStringList{u"Song.wav"_s});
    EXPECT_EQ(folder.read(u"Song.wav"_s), "new");
}

TEST_F(InstallStaged, replacesTheFileThatIsThereAndKeepsItsRights)
{
    folder.write(u"Song.wav"_s, "old");
    ASSERT_EQ(::chmod(qPrintable(song), 0600), 0);
    installStaged(staged, song);
    EXPECT_EQ(folder.read(u"Song.wav"_s), "new");
    EXPECT_EQ(QFile::permissions(song) & QFile::Permissions(0x0077), QFile::Permissions());
}

TEST_F(InstallStaged, saysThatTheTargetIsAFolderAndRemovesTheStagedFile)
{
    QDir().mkdir(song);
    EXPECT_EQ(errorOf([&] { installStaged(staged, song); }), EISDIR);
    EXPECT_EQ(folder.names(), QStringList{u"Song.wav"_s});
}

TEST_F(InstallStaged, namesTheFinalFileWhereNothingWasStaged)
{
    QFile::remove(staged);
    try {
        installStaged(staged, song);
        FAIL() << "a missing file was installed";
    } catch (const FileError& error) {
        EXPECT_EQ(error.sentence(), u"Song.wav: No such file or directory"_s);
    }
}

TEST_F(InstallStaged, takesNoLinkForAStagedFile)
{
    const QString original = folder.write(u"original"_s, "the user's");
    QFile::remove(staged);
    QFile::link(original, staged);
    EXPECT_EQ(errorOf([&] { installStaged(staged, song); }), ELOOP);
    EXPECT_EQ(folder.names(), QStringList{u"original"_s});
}

TEST_F(InstallStaged, removesTheStagedFileWhereTheFolderOfTheTargetIsMissing)
{
    EXPECT_EQ(errorOf([&] { installStaged(staged, folder.path(u"missing/Song.wav"_s)); }), ENOENT);
    EXPECT_TRUE(folder.names().isEmpty());
}

} // namespace
} // namespace orvane::test
