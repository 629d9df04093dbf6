#include "platform/filesystem/ReadFile.h"

#include "tests/support/TestFolder.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

struct RegularFileTest : testing::Test
{
    TestFolder folder;
};

TEST_F(RegularFileTest, isReadInBlocksFromAnyOffset)
{
    RegularFile file(folder.write(u"Song.mp3"_s, "0123456789"));
    EXPECT_EQ(file.size(), 10);
    EXPECT_EQ(file.read(0, 4), "0123");
    EXPECT_EQ(file.read(7, 2), "78");
    EXPECT_EQ(file.read(0, 0), "");
}

TEST_F(RegularFileTest, givesFewerBytesOnlyAtItsEnd)
{
    RegularFile file(folder.write(u"Song.mp3"_s, "0123456789"));
    EXPECT_EQ(file.read(8, 4), "89");
    EXPECT_EQ(file.read(10, 4), "");
    EXPECT_EQ(file.read(1'000, 4), "");
}

TEST_F(RegularFileTest, isOfferedThroughALink)
{
    const QString song = folder.write(u"Song.mp3"_s, "music");
    QFile::link(song, folder.path(u"link.mp3"_s));
    EXPECT_EQ(readRegularFile(folder.path(u"link.mp3"_s), 100), "music");
}

TEST_F(RegularFileTest, isNoFolderPipeOrDevice)
{
    const QString pipe = folder.path(u"pipe"_s);
    ASSERT_EQ(::mkfifo(qPrintable(pipe), 0600), 0);
    EXPECT_EQ(errorOf([&] { RegularFile file(folder.path()); }), EISDIR);
    EXPECT_EQ(errorOf([&] { RegularFile file(pipe); }), EINVAL);
    EXPECT_EQ(errorOf([&] { RegularFile file(u"/dev/zero"_s); }), EINVAL);
}

TEST_F(RegularFileTest, hasToBeThereAndReadable)
{
    EXPECT_EQ(errorOf([&] { RegularFile file(folder.path(u"missing"_s)); }), ENOENT);
    EXPECT_EQ(errorOf([&] { RegularFile file(folder.path(u"cut"_s) + QChar(u'\0')); }), EINVAL);
    const QString locked = folder.write(u"locked"_s, "secret");
    ASSERT_EQ(::chmod(qPrintable(locked), 0), 0);
    const int code = inChild([&] {
        becomeUnprivileged();
        return errorOf([&] { RegularFile file(locked); });
    });
    EXPECT_EQ(code, EACCES);
}

TEST_F(RegularFileTest, isReadWholeUpToALimit)
{
    const QString song = folder.write(u"Song.mp3"_s, "12345");
    EXPECT_EQ(readRegularFile(song, 5), "12345");
    EXPECT_EQ(errorOf([&] { readRegularFile(song, 4); }), EFBIG);
    EXPECT_EQ(readRegularFile(folder.write(u"empty"_s, ""), 0), "");
}

} // namespace
} // namespace orvane::test
