#include "platform/filesystem/DestinationTest.h"

#include "tests/support/TestFolder.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

struct DestinationWriteTest : testing::Test
{
    TestFolder folder;
};

TEST_F(DestinationWriteTest, makesTheFolderWithThoseAboveItAndLeavesItEmpty)
{
    const QString deep = folder.path(u"one/two/three"_s);
    destinationWriteTest(deep);
    EXPECT_TRUE(QDir(deep).exists());
    EXPECT_TRUE(QDir(deep).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

TEST_F(DestinationWriteTest, leavesWhatIsInTheFolderAlone)
{
    folder.write(u"Song.mp3"_s, "music");
    folder.write(u".orvane-write-test"_s, "of a killed run");
    destinationWriteTest(folder.path());
    EXPECT_EQ(folder.names(), QStringList{u"Song.mp3"_s});
}

TEST_F(DestinationWriteTest, saysThatAFileStandsWhereTheFolderShouldBe)
{
    folder.write(u"Orvane"_s, "a file");
    try {
        destinationWriteTest(folder.path(u"Orvane"_s));
        FAIL() << "a file was taken for a folder";
    } catch (const FileError& error) {
        EXPECT_EQ(error.sentence(), u"Orvane: Not a directory"_s);
    }
    EXPECT_EQ(folder.read(u"Orvane"_s), "a file");
}

TEST_F(DestinationWriteTest, writesThroughNoLink)
{
    const QString precious = folder.write(u"precious"_s, "untouched");
    QFile::link(precious, folder.path(u".orvane-write-test"_s));
    EXPECT_EQ(errorOf([&] { destinationWriteTest(folder.path()); }), ELOOP);
    EXPECT_EQ(folder.read(u"precious"_s), "untouched");
}

TEST_F(DestinationWriteTest, refusesANul)
{
    EXPECT_EQ(errorOf([&] { destinationWriteTest(folder.path(u"Orvane"_s) + QChar(u'\0') + u"x"_s); }), EINVAL);
    EXPECT_TRUE(folder.names().isEmpty());
}

TEST_F(DestinationWriteTest, failsInAFolderThatCannotBeWritten)
{
    ASSERT_EQ(::chmod(qPrintable(folder.path()), 0555), 0);
    const int code = inChild([&] {
        becomeUnprivileged();
        return errorOf([&] { destinationWriteTest(folder.path()); });
    });
    EXPECT_EQ(code, EACCES);
}

TEST_F(DestinationWriteTest, failsWhereTheFolderCannotBeMade)
{
    ASSERT_EQ(::chmod(qPrintable(folder.path()), 0555), 0);
    const int code = inChild([&] {
        becomeUnprivileged();
        return errorOf([&] { destinationWriteTest(folder.path(u"one/two"_s)); });
    });
    EXPECT_EQ(code, EACCES);
    EXPECT_TRUE(folder.names().isEmpty());
}

TEST_F(DestinationWriteTest, doesNotMindThatItsFileCannotBeRemoved)
{
    // In a sticky folder of somebody else's only the file's owner may remove it.
    if (::geteuid() == 0) {
        folder.write(u".orvane-write-test"_s, "");
        ASSERT_EQ(::chmod(qPrintable(folder.path(u".orvane-write-test"_s)), 0666), 0);
        ASSERT_EQ(::chmod(qPrintable(folder.path()), 01777), 0);
    }
    const int code = inChild([&] {
        becomeUnprivileged();
        return errorOf([&] { destinationWriteTest(folder.path()); });
    });
    EXPECT_EQ(code, 0);
}

} // namespace
} // namespace orvane::test
