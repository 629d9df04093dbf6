#include "platform/filesystem/AtomicFile.h"
#include "tests/support/TestFolder.h"

#include <csignal>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

struct ResourceLimit : testing::Test
{
    TestFolder folder;
    QString song = folder.write(u"Song.wav"_s, "old");
};

void limit(__rlimit_resource resource, rlim_t value)
{
    const rlimit both = {.rlim_cur = value, .rlim_max = value};
    ::setrlimit(resource, &both);
}

/// The system writes up to the limit and reports the short count; only the next write fails.
TEST_F(ResourceLimit, aFileThatOutgrowsItsLimitLeavesTheOldOne)
{
    const int code = inChild([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        limit(RLIMIT_FSIZE, 10'000);
        return errorOf([&] { writeAtomically(song, QByteArray(10'001, 'n')); });
    });
    EXPECT_EQ(code, EFBIG);
    EXPECT_EQ(folder.names(), QStringList{u"Song.wav"_s});
    EXPECT_EQ(folder.read(u"Song.wav"_s), "old");
}

TEST_F(ResourceLimit, aFileUpToItsLimitIsWritten)
{
    const int code = inChild([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        limit(RLIMIT_FSIZE, 10'000);
        return errorOf([&] { writeAtomically(song, QByteArray(10'000, 'n')); });
    });
    EXPECT_EQ(code, 0);
    EXPECT_EQ(folder.read(u"Song.wav"_s).size(), 10'000);
}

/// Writes the file with `spare` descriptors left to the process.
int writeWithDescriptors(const QString& path, int spare)
{
    return inChild([&] {
        const int next = ::open("/dev/null", O_RDONLY);
        ::close(next);
        limit(RLIMIT_NOFILE, rlim_t(next + spare));
        return errorOf([&] { writeAtomically(path, "new"); });
    });
}

TEST_F(ResourceLimit, aProcessOutOfDescriptorsLeavesTheOldFileAndNothingElse)
{
    for (const int spare : {0, 1}) {
        EXPECT_EQ(writeWithDescriptors(song, spare), EMFILE) << spare;
        EXPECT_EQ(folder.names(), QStringList{u"Song.wav"_s}) << spare;
        EXPECT_EQ(folder.read(u"Song.wav"_s), "old") << spare;
    }
}

TEST_F(ResourceLimit, twoDescriptorsAreEnough)
{
    EXPECT_EQ(writeWithDescriptors(song, 2), 0);
    EXPECT_EQ(folder.read(u"Song.wav"_s), "new");
}

TEST_F(ResourceLimit, aFolderThatCannotBeWrittenKeepsTheOldFile)
{
    ASSERT_EQ(::chmod(qPrintable(folder.path()), 0555), 0);
    const int code = inChild([&] {
        becomeUnprivileged();
        return errorOf([&] { writeAtomically(song, "new"); });
    });
    EXPECT_EQ(code, EACCES);
    EXPECT_EQ(folder.read(u"Song.wav"_s), "old");
    EXPECT_EQ(folder.names(), QStringList{u"Song.wav"_s});
}

TEST_F(ResourceLimit, aFolderThatCannotBeReadIsWrittenWithoutItsFlush)
{
    ASSERT_EQ(::chmod(qPrintable(folder.path()), 0333), 0);
    const int code = inChild([&] {
        becomeUnprivileged();
        return errorOf([&] { writeAtomically(song, "new"); });
    });
    ASSERT_EQ(::chmod(qPrintable(folder.path()), 0755), 0);
    EXPECT_EQ(code, 0);
    EXPECT_EQ(folder.read(u"Song.wav"_s), "new");
}

TEST_F(ResourceLimit, aFileThatMayNotBeReadIsReplacedAllTheSame)
{
    ASSERT_EQ(::chmod(qPrintable(folder.path()), 0777), 0);
    folder.write(u".Song.wav.new"_s, "leftover");
    ASSERT_EQ(::chmod(qPrintable(folder.path(u".Song.wav.new"_s)), 0), 0);
    const int code = inChild([&] {
        becomeUnprivileged();
        return errorOf([&] { writeAtomically(song, "new"); });
    });
    EXPECT_EQ(code, 0);
    EXPECT_EQ(folder.read(u"Song.wav"_s), "new");
}

} // namespace
} // namespace orvane::test
