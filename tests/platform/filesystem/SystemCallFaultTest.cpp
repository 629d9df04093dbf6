#include "tests/support/SystemCalls.h"
#include "tests/support/TestFolder.h"

#include <QFile>

#include <gmock/gmock.h>

/// A writer program is broken at each of its system calls, by the kernel's own door: it is killed there, or the call is
/// answered with an error. Whatever happens, the final name holds the complete old or the complete new file, and the
/// next run goes through and leaves nothing else behind.

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr qsizetype fileSize = 300'000;

class SystemCallFault : public testing::TestWithParam<QString>
{
protected:
    TestFolder folder;
    TestFolder notes;
    const QByteArray whole[3] = {QByteArray(fileSize, 'a'), QByteArray(fileSize, 'b'), QByteArray(fileSize, 'c')};
    const QByteArray& oldFile = whole[0];
    const QByteArray& newFile = whole[1];
    const QByteArray& nextFile = whole[2];

    QStringList writer(const QString& letter) const
    {
        return {QStringLiteral(ATOMIC_FILE_WRITER), GetParam(), folder.path(u"Song.wav"_s), letter};
    }

    /// An old file, and beside it what a killed run left.
    void prepare() const
    {
        QFile::remove(folder.path(u".Song.wav.new"_s));
        folder.write(u"Song.wav"_s, oldFile);
        folder.write(u".Song.wav.new"_s, "leftover");
    }

    QList<SystemCall> calls() const
    {
        prepare();
        const QString trace = notes.path(u"trace"_s);
        const ProgramOutcome outcome = runTraced(writer(u"b"_s), trace);
        EXPECT_EQ(outcome.exitCode, 0) << qPrintable(outcome.said);
        return callsBetweenMarks(QString::fromUtf8(notes.read(u"trace"_s)));
    }

    ProgramOutcome runWriterBroken(const SystemCall& call, const QString& fault, bool fromThenOn = false) const
    {
        prepare();
        return runBroken(writer(u"b"_s), call, fault, fromThenOn);
    }

    void expectOldOrNew() const
    {
        const QByteArray found = folder.read(u"Song.wav"_s);
        EXPECT_TRUE(found == oldFile || found == newFile) << found.size() << " bytes";
    }

    /// A run that went through wrote the new file.
    void expectHonest(const ProgramOutcome& outcome) const
    {
        EXPECT_FALSE(outcome.killed);
        EXPECT_TRUE(outcome.exitCode == 0 || outcome.exitCode == 1) << outcome.exitCode;
        EXPECT_TRUE(outcome.exitCode == 1 || folder.read(u"Song.wav"_s) == newFile);
    }

    void expectNothingHalfDone() const
    {
        const QByteArray staged = folder.read(u".Song.wav.new"_s);
        EXPECT_TRUE(staged.isNull() || staged == "leftover") << staged.size() << " bytes";
    }

    void expectNextRunToSucceed() const
    {
        const QStringList next = writer(u"c"_s);
        const ProgramOutcome outcome = runProgram(next.first(), next.sliced(1));
        EXPECT_EQ(outcome.exitCode, 0) << qPrintable(outcome.said);
        EXPECT_EQ(folder.names(), QStringList{u"Song.wav"_s});
        EXPECT_TRUE(folder.read(u"Song.wav"_s) == nextFile);
    }
};

TEST_P(SystemCallFault, theWalkSeesEveryStepOfAWrite)
{
    QStringList names;
    for (const SystemCall& call : calls())
        names.append(call.name);
    for (const QString& step : {u"openat"_s, u"fsync"_s, u"close"_s, u"rename"_s})
        EXPECT_TRUE(names.contains(step)) << qPrintable(step);
    EXPECT_LT(names.indexOf(u"fsync"_s), names.indexOf(u"rename"_s));
    EXPECT_GT(names.lastIndexOf(u"fsync"_s), names.indexOf(u"rename"_s)) << "the folder is flushed after the rename";
    EXPECT_EQ(names.count(u"fsync"_s), 2);
    EXPECT_EQ(names.count(u"rename"_s), 1);
    EXPECT_EQ(names.count(u"write"_s), GetParam() == u"write" ? 3 : 0);
}

TEST_P(SystemCallFault, killedAnywhereItLeavesTheOldOrTheNewFile)
{
    int old = 0;
    int fresh = 0;
    for (const SystemCall& call : calls()) {
        SCOPED_TRACE(placeOf(call, u"killed in"_s));
        EXPECT_TRUE(runWriterBroken(call, u"signal=KILL"_s).killed);
        expectOldOrNew();
        ++(folder.read(u"Song.wav"_s) == oldFile ? old : fresh);
        expectNextRunToSucceed();
    }
    EXPECT_GT(old, 0);
    EXPECT_GT(fresh, 0);
}

TEST_P(SystemCallFault, anErrorAnywhereIsSaidAndLeavesTheOldOrTheNewFile)
{
    const QList<SystemCall> all = calls();
    for (const QString& error : {u"EIO"_s, u"ENOSPC"_s, u"EDQUOT"_s}) {
        for (const SystemCall& call : all) {
            SCOPED_TRACE(placeOf(call, error));
            const ProgramOutcome outcome = runWriterBroken(call, u"error="_s + error);
            expectHonest(outcome);
            EXPECT_TRUE(outcome.exitCode == 0 || outcome.said.startsWith(u"Song.wav: ")) << qPrintable(outcome.said);
            expectOldOrNew();
            expectNothingHalfDone();
            expectNextRunToSucceed();
        }
    }
}

TEST_P(SystemCallFault, anErrorThatStaysLeavesTheOldOrTheNewFile)
{
    QStringList seen;
    for (const SystemCall& call : calls()) {
        // Without the one call no file can be removed either; without the other the process cannot even speak, and the
        // writing ends at the first refusal anyway.
        if (seen.contains(call.name) || call.name == u"unlink" || call.name == u"write")
            continue;
        seen.append(call.name);
        SCOPED_TRACE(placeOf(call, u"ENOSPC for good from"_s));
        expectHonest(runWriterBroken(call, u"error=ENOSPC"_s, true));
        expectOldOrNew();
        expectNothingHalfDone();
        expectNextRunToSucceed();
    }
}

TEST_P(SystemCallFault, aSignalInterruptsNothing)
{
    const QStringList interruptible = {u"openat"_s, u"flock"_s,  u"write"_s, u"fsync"_s,
                                       u"close"_s,  u"rename"_s, u"unlink"_s};
    for (const SystemCall& call : calls()) {
        if (!interruptible.contains(call.name))
            continue;
        SCOPED_TRACE(placeOf(call, u"EINTR"_s));
        const ProgramOutcome outcome = runWriterBroken(call, u"error=EINTR"_s);
        EXPECT_EQ(outcome.exitCode, 0) << qPrintable(outcome.said);
        EXPECT_TRUE(folder.read(u"Song.wav"_s) == newFile);
        EXPECT_EQ(folder.names(), QStringList{u"Song.wav"_s});
    }
}

/// The writes, the flush and the close before the rename: each may be the one that says that bytes were lost.
QList<SystemCall> callsThatMayLoseBytes(const QList<SystemCall>& calls)
{
    QList<SystemCall> found;
    for (qsizetype index = 0; calls[index].name != u"rename"; ++index) {
        const bool last = calls[index + 1].name == u"rename";
        if (calls[index].name == u"write" || calls[index].name == u"fsync" || (last && calls[index].name == u"close"))
            found.append(calls[index]);
    }
    return found;
}

TEST_P(SystemCallFault, lostBytesAreNoticedAtOnceAndNothingIsTriedAgain)
{
    const QList<SystemCall> risky = callsThatMayLoseBytes(calls());
    EXPECT_EQ(risky.size(), GetParam() == u"write" ? 5 : 2);
    for (const SystemCall& call : risky) {
        SCOPED_TRACE(placeOf(call, u"EIO"_s));
        EXPECT_EQ(runWriterBroken(call, u"error=EIO"_s).exitCode, 1);
        EXPECT_EQ(folder.names(), QStringList{u"Song.wav"_s});
        EXPECT_TRUE(folder.read(u"Song.wav"_s) == oldFile);
    }
}

TEST_P(SystemCallFault, aFolderThatCannotBeFlushedIsSaidThoughTheNewFileStands)
{
    const QList<SystemCall> all = calls();
    for (qsizetype index = all.size() - 1; index >= 0 && all[index].name != u"rename"; --index) {
        if (all[index].name != u"fsync")
            continue;
        EXPECT_EQ(runWriterBroken(all[index], u"error=EIO"_s).exitCode, 1);
        EXPECT_TRUE(folder.read(u"Song.wav"_s) == newFile);
    }
}

INSTANTIATE_TEST_SUITE_P(Ways, SystemCallFault, testing::Values(u"write"_s, u"install"_s),
                         [](const auto& way) { return way.param.toStdString(); });

} // namespace
} // namespace orvane::test
