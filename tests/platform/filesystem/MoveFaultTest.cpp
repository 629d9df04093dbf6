#include "tests/support/SystemCalls.h"
#include "tests/support/TestFolder.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

/// A program that moves a file to another file system is broken at each of its system calls. Whatever happens, the
/// file is whole at its old or at its new name, and nothing else lies at the new one.

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

struct MoveFault : testing::Test
{
    TestFolder folder;
    TestFolder notes;
    QTemporaryDir memory{u"/dev/shm/orvane-test-XXXXXX"_s};
    const QByteArray song = QByteArray(600'000, 's');
    const QStringList mover = {QStringLiteral(FILE_MOVER), folder.path(u"Song.wav"_s), memory.filePath(u"Song.wav"_s)};

    void prepare() const
    {
        folder.write(u"Song.wav"_s, song);
        QFile::remove(memory.filePath(u"Song.wav"_s));
    }

    QList<SystemCall> calls() const
    {
        prepare();
        EXPECT_EQ(runTraced(mover, notes.path(u"trace"_s)).exitCode, 0);
        return callsBetweenMarks(QString::fromUtf8(notes.read(u"trace"_s)));
    }

    QByteArray moved() const
    {
        QFile file(memory.filePath(u"Song.wav"_s));
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }

    void expectWholeSomewhere() const
    {
        EXPECT_TRUE(moved().isNull() || moved() == song) << moved().size() << " bytes";
        EXPECT_TRUE(folder.read(u"Song.wav"_s) == song || moved() == song);
    }

    /// Nothing but the file itself is left where it went to.
    void expectTidy() const
    {
        const QStringList names = QDir(memory.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        EXPECT_TRUE(names.isEmpty() || names == QStringList{u"Song.wav"_s}) << qPrintable(names.join(u' '));
    }

    void expectNextRunToSucceed() const
    {
        prepare();
        EXPECT_EQ(runProgram(mover.first(), mover.sliced(1)).exitCode, 0);
        EXPECT_TRUE(moved() == song);
        EXPECT_TRUE(folder.names().isEmpty());
        expectTidy();
    }
};

TEST_F(MoveFault, killedAnywhereItLeavesTheWholeFile)
{
    for (const SystemCall& call : calls()) {
        SCOPED_TRACE(placeOf(call, u"killed in"_s));
        prepare();
        EXPECT_TRUE(runBroken(mover, call, u"signal=KILL"_s).killed);
        expectWholeSomewhere();
        expectNextRunToSucceed();
    }
}

TEST_F(MoveFault, anErrorAnywhereLeavesTheWholeFile)
{
    const QList<SystemCall> all = calls();
    for (const QString& error : {u"EIO"_s, u"ENOSPC"_s}) {
        for (const SystemCall& call : all) {
            SCOPED_TRACE(placeOf(call, error));
            prepare();
            const ProgramOutcome outcome = runBroken(mover, call, u"error="_s + error);
            EXPECT_FALSE(outcome.killed);
            EXPECT_TRUE(outcome.exitCode == 0 || outcome.said.startsWith(u"Song.wav: ")) << qPrintable(outcome.said);
            EXPECT_TRUE(outcome.exitCode == 1 || moved() == song);
            expectWholeSomewhere();
            expectNextRunToSucceed();
        }
    }
}

TEST_F(MoveFault, theOriginalGoesOnlyAfterTheCopyAndItsFolderAreFlushed)
{
    for (const SystemCall& call : calls()) {
        if (call.name != u"read" && call.name != u"write" && call.name != u"fsync")
            continue;
        SCOPED_TRACE(placeOf(call, u"EIO"_s));
        prepare();
        EXPECT_EQ(runBroken(mover, call, u"error=EIO"_s).exitCode, 1);
        EXPECT_TRUE(folder.read(u"Song.wav"_s) == song);
    }
}

TEST_F(MoveFault, aSignalInterruptsNothing)
{
    for (const SystemCall& call : calls()) {
        if (call.name != u"read" && call.name != u"write" && call.name != u"fsync" && call.name != u"renameat2")
            continue;
        SCOPED_TRACE(placeOf(call, u"EINTR"_s));
        prepare();
        EXPECT_EQ(runBroken(mover, call, u"error=EINTR"_s).exitCode, 0);
        EXPECT_TRUE(moved() == song);
        expectTidy();
    }
}

TEST_F(MoveFault, theWalkSeesTheCopyAndTheMove)
{
    QStringList names;
    for (const SystemCall& call : calls())
        names.append(call.name);
    EXPECT_GE(names.count(u"read"_s), 4) << "three blocks and the end";
    EXPECT_GE(names.count(u"write"_s), 3);
    EXPECT_EQ(names.count(u"fsync"_s), 2) << "the copy and the folder";
    EXPECT_EQ(names.count(u"renameat2"_s), 2) << "the move that the file systems refuse, and the copy's";
}

} // namespace
} // namespace orvane::test
