#include "platform/filesystem/FileError.h"

#include <cerrno>
#include <cstring>
#include <gmock/gmock.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(FileError, saysTheFilesNameAndTheSystemsWords)
{
    const FileError error(u"/music/001 - Song.mp3"_s, ENOSPC);
    EXPECT_EQ(error.sentence(), u"001 - Song.mp3: No space left on device"_s);
}

TEST(FileError, keepsThePathAndTheCodeToBranchOn)
{
    const FileError error(u"/music/Song.mp3"_s, EACCES);
    EXPECT_EQ(error.path(), u"/music/Song.mp3"_s);
    EXPECT_EQ(error.code(), EACCES);
    EXPECT_STREQ(error.what(), std::strerror(EACCES));
}

TEST(FileError, namesAFolderThatItsPathEndsInASlashFor)
{
    EXPECT_EQ(FileError(u"/music/Orvane/"_s, EROFS).sentence(), u"Orvane: Read-only file system"_s);
}

} // namespace
} // namespace orvane::test
