#include "platform/filesystem/AtomicFile.h"
#include "tests/mastering/arithmetic/Signals.h"
#include "tests/platform/sound/Program.h"
#include "tests/support/Sandbox.h"
#include "tests/support/SystemCalls.h"
#include "tests/support/TestFolder.h"
#include "tests/video/RenderedVideo.h"

#include <QFile>

#include <gtest/gtest.h>
#include <random>

using namespace orvane;
using namespace Qt::Literals::StringLiterals;

namespace {

/// A render in a process of its own, which may be harmed.
class BrokenRender : public testing::Test
{
protected:
    BrokenRender()
    {
        const test::Samples sound = test::music(2.0, 44100.0).front();
        folder_.write(u"song.wav"_s, test::floatWav({sound.begin(), sound.end()}, 44100, 1));
    }

    QStringList program() const
    {
        return {QStringLiteral(ORVANE_LAB),   u"render"_s,   folder_.path(u"song.wav"_s),
                folder_.path(u"video.mp4"_s), u"--aspect"_s, u"1:1"_s};
    }

    test::TestFolder folder_;
};

TEST_F(BrokenRender, aFullDiskIsToldAndLeavesNothing)
{
    folder_.write(u"video.mp4"_s, "the previous video");
    const QString unfinished = temporarySibling(folder_.path(u"video.mp4"_s));
    const test::ProgramOutcome outcome = test::runBrokenAt(program(), unfinished, u"write"_s, u"error=ENOSPC"_s);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.said, u"The video could not be written: No space left on device\n");
    EXPECT_EQ(folder_.names(), QStringList{u"song.wav"_s});
}

TEST_F(BrokenRender, aFileThatMayNotGrowIsToldAndLeavesNothing)
{
    const test::Outcome outcome =
        test::run(u"bash"_s, QStringList{u"-c"_s, u"trap '' XFSZ; ulimit -f 20; exec \"$@\""_s, u"-"_s} + program());
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.errors, "The video could not be written: File too large\n");
    EXPECT_EQ(folder_.names(), QStringList{u"song.wav"_s});
}

TEST_F(BrokenRender, aFlushThatFailsIsToldAndLeavesNothing)
{
    const test::ProgramOutcome outcome = test::runBroken(program(), {.name = u"fsync"_s, .number = 1}, u"error=EIO"_s);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.said, u"The video could not be written: Input/output error\n");
    EXPECT_EQ(folder_.names(), QStringList{u"song.wav"_s});
}

TEST_F(BrokenRender, killedAtAnyMomentItLeavesNothingAtTheFinalName)
{
    std::mt19937 random(test::seed());
    QList<test::SystemCall> moments{{.name = u"fsync"_s, .number = 1}, {.name = u"rename"_s, .number = 1}};
    for (int round = 0; round < 4; ++round)
        moments << test::SystemCall{.name = u"write"_s, .number = std::uniform_int_distribution(1, 4)(random)};
    for (const test::SystemCall& moment : moments) {
        const test::ProgramOutcome outcome = test::runBroken(program(), moment, u"signal=KILL"_s);
        EXPECT_TRUE(outcome.killed) << test::placeOf(moment, u"KILL"_s);
        EXPECT_FALSE(QFile::exists(folder_.path(u"video.mp4"_s))) << test::placeOf(moment, u"KILL"_s);
    }
    // What a killed run left is no hindrance.
    EXPECT_EQ(test::run(program().first(), program().sliced(1)).exitCode, 0);
    EXPECT_EQ(folder_.names(), (QStringList{u"song.wav"_s, u"video.mp4"_s}));
}

} // namespace
