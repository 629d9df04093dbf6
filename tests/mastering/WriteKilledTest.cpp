#include "mastering/Format.h"
#include "tests/support/SystemCalls.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

/// A program that writes a master is killed at each of its system calls, or one of them is answered with an error.
/// Whatever happens, the master is the earlier or the new one, whole, and the next run writes it.

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using Master::Format;

/// What came before: an earlier master, and beside it what a run that was killed left.
enum class Before
{
    Mastered,
    Killed,
};

class WriteKilled : public testing::TestWithParam<Format>
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(runProgram(program().first(), program().sliced(1)).exitCode, 0);
        whole = folder.read(name());
        ASSERT_GT(whole.size(), 10'000);
    }

    static QString name() { return u"Song."_s + extension(GetParam()); }

    static QString leftover() { return u'.' + name() + u".new"_s; }

    QStringList program() const
    {
        return {QStringLiteral(MASTERING_WORKER), QString::number(int(GetParam())), folder.path(name())};
    }

    QList<SystemCall> calls(Before before) const
    {
        prepare(before);
        EXPECT_EQ(runTraced(program(), notes.path(u"trace"_s)).exitCode, 0);
        return callsBetweenMarks(QString::fromUtf8(notes.read(u"trace"_s)));
    }

    void prepare(Before before) const
    {
        folder.write(name(), earlier);
        if (before == Before::Killed)
            folder.write(leftover(), "leftover");
    }

    void expectEarlierOrNew() const
    {
        const QByteArray found = folder.read(name());
        EXPECT_TRUE(found == earlier || found == whole) << found.size() << " bytes";
    }

    void expectNextRunToSucceed() const
    {
        EXPECT_EQ(runProgram(program().first(), program().sliced(1)).exitCode, 0);
        EXPECT_TRUE(folder.read(name()) == whole);
        EXPECT_EQ(folder.names(), QStringList{name()});
    }

    TestFolder folder;
    TestFolder notes;
    const QByteArray earlier = "earlier";
    QByteArray whole;
};

INSTANTIATE_TEST_SUITE_P(Formats, WriteKilled, testing::ValuesIn(Master::allFormats), [](const auto& format) {
    return std::string(extension(format.param).toStdString()) + std::to_string(int(format.param));
});

TEST_P(WriteKilled, anywhereLeavesTheEarlierOrTheNewMaster)
{
    int old = 0;
    int fresh = 0;
    for (const SystemCall& call : calls(Before::Killed)) {
        SCOPED_TRACE(placeOf(call, u"killed in"_s));
        prepare(Before::Killed);
        EXPECT_TRUE(runBroken(program(), call, u"signal=KILL"_s).killed);
        expectEarlierOrNew();
        ++(folder.read(name()) == earlier ? old : fresh);
        expectNextRunToSucceed();
    }
    EXPECT_GT(old, 0);
    EXPECT_GT(fresh, 0);
}

TEST_P(WriteKilled, aFullDiskAnywhereIsSaidAndLeavesTheEarlierOrTheNewMasterAlone)
{
    int refused = 0;
    for (const SystemCall& call : calls(Before::Mastered)) {
        SCOPED_TRACE(placeOf(call, u"ENOSPC"_s));
        prepare(Before::Mastered);
        const ProgramOutcome outcome = runBroken(program(), call, u"error=ENOSPC"_s);
        EXPECT_FALSE(outcome.killed);
        EXPECT_TRUE(outcome.exitCode == 0 || outcome.said == name() + u": No space left on device\n"_s)
            << qPrintable(outcome.said);
        EXPECT_TRUE(outcome.exitCode == 1 || folder.read(name()) == whole);
        expectEarlierOrNew();
        // Where a look at the temporary file fails it cannot be told whose it is, so that it stays for the next run.
        if (call.name != u"newfstatat") {
            EXPECT_EQ(folder.names(), QStringList{name()});
        }
        refused += outcome.exitCode;
        expectNextRunToSucceed();
    }
    EXPECT_GE(refused, 3);
}

} // namespace
} // namespace orvane::test
