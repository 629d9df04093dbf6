#include "platform/filesystem/AtomicFile.h"
#include "tests/mastering/arithmetic/Signals.h"
#include "tests/platform/sound/Program.h"
#include "tests/support/Sandbox.h"
#include "tests/support/SystemCalls.h"
#include "tests/support/TestFolder.h"
#include "tests/video/RenderedVideo.h"

#include <QFile>
#include <QMap>
#include <QRegularExpression>

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <utility>

using namespace orvane;
using namespace Qt::Literals::StringLiterals;

namespace {

/// Each kind of call that a traced program made, with the number of the last one in the thread that made most.
QList<test::SystemCall> lastCalls(const QByteArray& trace)
{
    static const QRegularExpression start(u"^(\\d+) +(\\w+)\\("_s);
    QMap<std::pair<QString, QString>, int> counted;
    QMap<QString, int> most;
    for (const QString& line : QString::fromUtf8(trace).split(u'\n')) {
        const QRegularExpressionMatch match = start.match(line);
        const QString name = match.captured(2);
        if (match.hasMatch() && !name.startsWith(u"exit") && name != u"execve")
            most[name] = std::max(most.value(name), ++counted[{match.captured(1), name}]);
    }
    QList<test::SystemCall> calls;
    for (auto each = most.begin(); each != most.end(); ++each)
        calls << test::SystemCall{.name = each.key(), .number = each.value()};
    return calls;
}

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

TEST_F(BrokenRender, aDiskThatFillsUpAtAnyWriteIsToldAndLeavesNothing)
{
    const QString unfinished = temporarySibling(folder_.path(u"video.mp4"_s));
    int write = 1;
    for (; !HasFailure(); ++write) {
        folder_.write(u"video.mp4"_s, "the previous video");
        const QString fault = u"error=ENOSPC:when=%1+"_s.arg(write);
        const test::ProgramOutcome outcome = test::runBrokenAt(program(), unfinished, u"write"_s, fault);
        if (outcome.exitCode == 0)
            break;
        EXPECT_EQ(outcome.exitCode, 1) << write;
        EXPECT_EQ(outcome.said, u"The video could not be written: No space left on device\n") << write;
        EXPECT_EQ(folder_.names(), QStringList{u"song.wav"_s}) << write;
    }
    EXPECT_GT(write, 3) << "the film, and what makes room for its index";
    EXPECT_TRUE(test::decodesWhole(folder_.path(u"video.mp4"_s)));
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

TEST_F(BrokenRender, killedAtAnyMomentItLeavesNothingOrAWholeFilmAtTheFinalName)
{
    const QString trace = folder_.path(u"trace"_s);
    ASSERT_EQ(test::runTraced(program(), trace).exitCode, 0);
    const QList<test::SystemCall> calls = lastCalls(folder_.read(u"trace"_s));
    QFile::remove(trace);
    QFile::remove(folder_.path(u"video.mp4"_s));
    std::mt19937 random(test::seed());
    QList<test::SystemCall> moments{{.name = u"fsync"_s, .number = 1}, {.name = u"rename"_s, .number = 1}};
    for (int round = 0; round < 10; ++round) {
        const test::SystemCall& call = calls[std::uniform_int_distribution<qsizetype>(0, calls.size() - 1)(random)];
        moments << test::SystemCall{.name = call.name, .number = std::uniform_int_distribution(1, call.number)(random)};
    }
    int kills = 0;
    for (const test::SystemCall& moment : moments) {
        SCOPED_TRACE(test::placeOf(moment, u"KILL"_s));
        kills += test::runBroken(program(), moment, u"signal=KILL"_s).killed ? 1 : 0;
        if (QFile::exists(folder_.path(u"video.mp4"_s))) {
            EXPECT_TRUE(test::decodesWhole(folder_.path(u"video.mp4"_s)));
        }
        QFile::remove(folder_.path(u"video.mp4"_s));
    }
    // Threads share their work anew in each run, so that one of them may not come to its call again.
    EXPECT_GT(kills, 6);
    // What a killed run left is no hindrance.
    EXPECT_EQ(test::run(program().first(), program().sliced(1)).exitCode, 0);
    EXPECT_EQ(folder_.names(), (QStringList{u"song.wav"_s, u"video.mp4"_s}));
}

} // namespace
