#include "tests/support/SystemCalls.h"
#include "tests/support/TestFolder.h"
#include "trackfiles/namer/RenamePlan.h"
#include "trackfiles/tags/Tags.h"

#include <QFile>
#include <QSet>

#include <gtest/gtest.h>

/// A program that tags a file, or renames the files of two tracks, is killed at each of its system calls, or one of
/// them is answered with an error. Whatever happens, each file is whole under its old or its new name, and the next run
/// finishes the work.

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

QStringList namesOf(const QList<SystemCall>& calls)
{
    QStringList names;
    for (const SystemCall& call : calls)
        names.append(call.name);
    return names;
}

class Killed : public testing::Test
{
protected:
    QList<SystemCall> calls(const QStringList& program) const
    {
        const ProgramOutcome outcome = runTraced(program, notes.path(u"trace"_s));
        EXPECT_EQ(outcome.exitCode, 0) << qPrintable(outcome.said);
        return callsBetweenMarks(QString::fromUtf8(notes.read(u"trace"_s)));
    }

    static QString worker() { return QStringLiteral(TRACK_FILES_WORKER); }

    TestFolder folder;
    TestFolder notes;
};

class TagKilled : public Killed
{
protected:
    QStringList program() const { return {worker(), u"tag"_s, folder.path(u"Song.mp3"_s), u"new"_s}; }

    /// A tagged file, and beside it what a killed run left.
    void prepare() const
    {
        QFile::remove(folder.path(u".Song.mp3.tagging"_s));
        folder.write(u"Song.mp3"_s, oldFile);
        folder.write(u".Song.mp3.tagging"_s, "leftover");
    }

    void expectOldOrNew() const
    {
        const QByteArray found = folder.read(u"Song.mp3"_s);
        EXPECT_TRUE(found == oldFile || found == newFile) << found.size() << " bytes";
    }

    void expectNextRunToSucceed() const
    {
        const ProgramOutcome outcome = runProgram(worker(), program().sliced(1));
        EXPECT_EQ(outcome.exitCode, 0) << qPrintable(outcome.said);
        EXPECT_TRUE(folder.read(u"Song.mp3"_s) == newFile);
        EXPECT_EQ(folder.names(), QStringList{u"Song.mp3"_s});
    }

    const QByteArray audio = "\xFF\xFB" + QByteArray(1'500'000, 'a');
    const QByteArray oldFile = Tags::build({.title = u"the old title"_s}) + audio;
    const QByteArray newFile = Tags::build({.title = u"new"_s}) + audio;
};

TEST_F(TagKilled, theWalkSeesEveryStepOfAWrite)
{
    prepare();
    const QStringList names = namesOf(calls(program()));
    for (const QString& step : {u"openat"_s, u"pread64"_s, u"write"_s, u"fsync"_s, u"close"_s, u"rename"_s})
        EXPECT_TRUE(names.contains(step)) << qPrintable(step);
    EXPECT_LT(names.indexOf(u"fsync"_s), names.indexOf(u"rename"_s));
}

TEST_F(TagKilled, killedAnywhereItLeavesTheOldOrTheNewFile)
{
    prepare();
    int old = 0;
    int fresh = 0;
    for (const SystemCall& call : calls(program())) {
        SCOPED_TRACE(placeOf(call, u"killed in"_s));
        prepare();
        EXPECT_TRUE(runBroken(program(), call, u"signal=KILL"_s).killed);
        expectOldOrNew();
        ++(folder.read(u"Song.mp3"_s) == oldFile ? old : fresh);
        expectNextRunToSucceed();
    }
    EXPECT_GT(old, 0);
    EXPECT_GT(fresh, 0);
}

TEST_F(TagKilled, aFullDiskAnywhereIsSaidAndLeavesTheOldOrTheNewFile)
{
    prepare();
    for (const SystemCall& call : calls(program())) {
        SCOPED_TRACE(placeOf(call, u"ENOSPC"_s));
        prepare();
        const ProgramOutcome outcome = runBroken(program(), call, u"error=ENOSPC"_s);
        EXPECT_FALSE(outcome.killed);
        EXPECT_TRUE(outcome.exitCode == 0 || outcome.said == u"Song.mp3: No space left on device\n")
            << qPrintable(outcome.said);
        EXPECT_TRUE(outcome.exitCode == 1 || folder.read(u"Song.mp3"_s) == newFile);
        expectOldOrNew();
        expectNextRunToSucceed();
    }
}

class RenameKilled : public Killed
{
protected:
    QStringList program() const { return {worker(), u"rename"_s, folder.path()}; }

    void prepare() const
    {
        for (const QString& name : folder.names())
            QFile::remove(folder.path(name));
        for (const QString& name : before)
            folder.write(name, name.toLower().toUtf8());
    }

    static QString renamed(const QString& name)
    {
        return name.startsWith(u"01 - ") ? name.sliced(5) : u'N' + name.sliced(1);
    }

    /// How many files carry their new name; each is whole under one of its two.
    int filesThatMoved() const
    {
        int moved = 0;
        EXPECT_EQ(folder.names().size(), before.size());
        for (const QString& name : before) {
            const QByteArray old = folder.read(name);
            const QByteArray fresh = folder.read(renamed(name));
            EXPECT_NE(old.isNull(), fresh.isNull()) << qPrintable(name);
            EXPECT_EQ(old.isNull() ? fresh : old, name.toLower().toUtf8());
            moved += old.isNull() ? 1 : 0;
        }
        return moved;
    }

    const QStringList before{u"01 - Sea lyrics.txt"_s, u"01 - Sea.lrc"_s, u"01 - Sea.mp3"_s,
                             u"night lyrics.txt"_s,    u"night.lrc"_s,    u"night.mp3"_s};
};

TEST_F(RenameKilled, theWalkSeesEveryRename)
{
    prepare();
    EXPECT_EQ(namesOf(calls(program())).count(u"renameat2"_s), before.size());
    EXPECT_EQ(filesThatMoved(), before.size());
}

TEST_F(RenameKilled, killedAnywhereEachFileIsWholeAndTheNextRunFinishes)
{
    prepare();
    QSet<int> seen;
    for (const SystemCall& call : calls(program())) {
        SCOPED_TRACE(placeOf(call, u"killed in"_s));
        prepare();
        EXPECT_TRUE(runBroken(program(), call, u"signal=KILL"_s).killed);
        seen.insert(filesThatMoved());
        EXPECT_EQ(runProgram(worker(), program().sliced(1)).exitCode, 0);
        EXPECT_EQ(filesThatMoved(), before.size());
    }
    EXPECT_GE(seen.size(), before.size());
}

TEST_F(RenameKilled, anErrorAtOneRenameIsOneLineAndTheRestGoesOn)
{
    prepare();
    int lines = 0;
    for (const SystemCall& call : calls(program())) {
        if (call.name != u"renameat2")
            continue;
        SCOPED_TRACE(placeOf(call, u"EIO"_s));
        prepare();
        const QString said = runBroken(program(), call, u"error=EIO"_s).said;
        EXPECT_EQ(said, before[lines++] + u": Input/output error\n"_s);
        EXPECT_EQ(filesThatMoved(), before.size() - 1);
    }
    EXPECT_EQ(lines, before.size());
}

} // namespace
} // namespace orvane::test
