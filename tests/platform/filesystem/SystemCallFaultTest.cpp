#include "tests/support/TestFolder.h"

#include <QFile>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>

#include <gmock/gmock.h>

/// A writer program is broken at each of its system calls, by the kernel's own door: it is killed there, or the call is
/// answered with an error. Whatever happens, the final name holds the complete old or the complete new file, and the
/// next run goes through and leaves nothing else behind.

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr qsizetype fileSize = 300'000;

/// One call among all those of its name that a process makes, counted from 1.
struct SystemCall
{
    QString name;
    int number = 0;
};

struct Outcome
{
    bool killed = false;
    int exitCode = 0;
    QString said;
};

Outcome run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // The search for leaks cannot run in a process that is traced.
    environment.insert(u"ASAN_OPTIONS"_s, u"detect_leaks=0"_s);
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(60'000))
        process.kill();
    return {.killed = process.exitStatus() == QProcess::CrashExit,
            .exitCode = process.exitCode(),
            .said = QString::fromLocal8Bit(process.readAll())};
}

/// The calls between the writer's two marks that reach for a file, in their order.
QList<SystemCall> callsBetweenMarks(const QString& trace)
{
    static const QRegularExpression line(u"^\\d+ +(\\w+)\\("_s);
    static const QStringList relevant = {u"openat"_s, u"open"_s,   u"newfstatat"_s, u"lstat"_s, u"fstat"_s,
                                         u"flock"_s,  u"fcntl"_s,  u"fchmod"_s,     u"write"_s, u"fsync"_s,
                                         u"close"_s,  u"rename"_s, u"unlink"_s};
    QList<SystemCall> calls;
    QMap<QString, int> counted;
    bool between = false;
    for (const QString& text : trace.split(u'\n')) {
        const QString name = line.match(text).captured(1);
        const int number = ++counted[name];
        if (text.contains(u"atomic-file-writer-mark"))
            between = !between;
        else if (between && relevant.contains(name))
            calls.append({.name = name, .number = number});
    }
    return calls;
}

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
        const Outcome outcome = run(u"strace"_s, QStringList{u"-f"_s, u"-o"_s, trace} + writer(u"b"_s));
        EXPECT_EQ(outcome.exitCode, 0) << qPrintable(outcome.said);
        return callsBetweenMarks(QString::fromUtf8(notes.read(u"trace"_s)));
    }

    Outcome runBroken(const SystemCall& call, const QString& fault, bool fromThenOn = false) const
    {
        prepare();
        const QString injection = u"inject=%1:%2:when=%3%4"_s.arg(call.name, fault, QString::number(call.number),
                                                                  fromThenOn ? u"+"_s : QString());
        return run(u"strace"_s, QStringList{u"-f"_s, u"-qq"_s, u"-o"_s, u"/dev/null"_s, u"-e"_s,
                                            u"trace="_s + call.name, u"-e"_s, injection} +
                                    writer(u"b"_s));
    }

    void expectOldOrNew() const
    {
        const QByteArray found = folder.read(u"Song.wav"_s);
        EXPECT_TRUE(found == oldFile || found == newFile) << found.size() << " bytes";
    }

    /// A run that went through wrote the new file.
    void expectHonest(const Outcome& outcome) const
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
        const Outcome outcome = run(next.first(), next.sliced(1));
        EXPECT_EQ(outcome.exitCode, 0) << qPrintable(outcome.said);
        EXPECT_EQ(folder.names(), QStringList{u"Song.wav"_s});
        EXPECT_TRUE(folder.read(u"Song.wav"_s) == nextFile);
    }
};

std::string placeOf(const SystemCall& call, const QString& fault)
{
    return u"%1 %2 at call %3"_s.arg(fault, call.name, QString::number(call.number)).toStdString();
}

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
        EXPECT_TRUE(runBroken(call, u"signal=KILL"_s).killed);
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
            const Outcome outcome = runBroken(call, u"error="_s + error);
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
        // Without this call no file can be removed either.
        if (seen.contains(call.name) || call.name == u"unlink")
            continue;
        seen.append(call.name);
        SCOPED_TRACE(placeOf(call, u"ENOSPC for good from"_s));
        expectHonest(runBroken(call, u"error=ENOSPC"_s, true));
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
        const Outcome outcome = runBroken(call, u"error=EINTR"_s);
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
        EXPECT_EQ(runBroken(call, u"error=EIO"_s).exitCode, 1);
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
        EXPECT_EQ(runBroken(all[index], u"error=EIO"_s).exitCode, 1);
        EXPECT_TRUE(folder.read(u"Song.wav"_s) == newFile);
    }
}

INSTANTIATE_TEST_SUITE_P(Ways, SystemCallFault, testing::Values(u"write"_s, u"install"_s),
                         [](const auto& way) { return way.param.toStdString(); });

} // namespace
} // namespace orvane::test
