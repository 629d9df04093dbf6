#include "tests/support/ScriptedServer.h"
#include "tests/support/SystemCalls.h"
#include "tests/support/TestFolder.h"

#include <QFile>

#include <gmock/gmock.h>

/// A program that saves one asset is killed at each of its system calls, or one of them is answered with an error.
/// Whatever happens, the final name is empty as it was or holds the whole file, and the next run saves it and leaves
/// nothing else behind.

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

const QByteArray sound = QByteArray("sound").repeated(12'000);

class AssetKilled : public testing::Test
{
protected:
    AssetKilled() { server.play({send(answer("200 OK", "Content-Type: audio/mpeg\r\n", sound))}); }

    QStringList saver() const
    {
        return {QStringLiteral(ASSET_SAVER), server.url(u"/a.mp3"_s).toString(), folder.path(u"001 - Song.mp3"_s)};
    }

    /// An empty leftover under the final name, and beside it what a killed run left.
    void prepare() const
    {
        QFile::remove(folder.path(u"001 - Song.mp3.part"_s));
        folder.write(u"001 - Song.mp3"_s, {});
        folder.write(u"001 - Song.mp3.part"_s, QByteArray(100'000, 'o'));
    }

    /// Each once, whatever thread makes it.
    QList<SystemCall> calls() const
    {
        prepare();
        const ProgramOutcome outcome = runTraced(saver(), notes.path(u"trace"_s));
        EXPECT_EQ(outcome.exitCode, 0) << qPrintable(outcome.said);
        QList<SystemCall> distinct;
        for (const SystemCall& call : callsBetweenMarks(QString::fromUtf8(notes.read(u"trace"_s))))
            if (!distinct.contains(call))
                distinct.append(call);
        return distinct;
    }

    bool isWhole() const { return folder.read(u"001 - Song.mp3"_s) == sound; }

    void expectNothingOrTheWhole() const
    {
        const QByteArray found = folder.read(u"001 - Song.mp3"_s);
        EXPECT_TRUE(found.isEmpty() || found == sound) << found.size() << " bytes";
    }

    void expectNextRunToSucceed() const
    {
        const QStringList program = saver();
        const ProgramOutcome outcome = runProgram(program.first(), program.sliced(1));
        EXPECT_EQ(outcome.exitCode, 0) << qPrintable(outcome.said);
        EXPECT_TRUE(isWhole());
    }

    ScriptedServer server;
    TestFolder folder;
    TestFolder notes;
};

TEST_F(AssetKilled, theWalkSeesEveryStepOfASave)
{
    QStringList names;
    for (const SystemCall& call : calls())
        names.append(call.name);
    for (const QString& step : {u"openat"_s, u"flock"_s, u"write"_s, u"fsync"_s, u"close"_s, u"rename"_s})
        EXPECT_TRUE(names.contains(step)) << qPrintable(step);
    EXPECT_EQ(folder.names(), QStringList{u"001 - Song.mp3"_s});
}

TEST_F(AssetKilled, killedAnywhereItLeavesNothingOrTheWholeFile)
{
    int killed = 0;
    int whole = 0;
    for (const SystemCall& call : calls()) {
        SCOPED_TRACE(placeOf(call, u"killed in"_s));
        prepare();
        killed += runBroken(saver(), call, u"signal=KILL"_s).killed ? 1 : 0;
        expectNothingOrTheWhole();
        whole += isWhole() ? 1 : 0;
        expectNextRunToSucceed();
    }
    EXPECT_GT(killed, whole);
    EXPECT_GT(whole, 0);
}

TEST_F(AssetKilled, anErrorAtTheDiskIsSaidWithTheFilesName)
{
    const QStringList disk{u"flock"_s, u"fsync"_s, u"rename"_s};
    for (const SystemCall& call : calls()) {
        if (!disk.contains(call.name))
            continue;
        SCOPED_TRACE(placeOf(call, u"EIO"_s));
        prepare();
        const ProgramOutcome outcome = runBroken(saver(), call, u"error=EIO"_s);
        EXPECT_TRUE(outcome.exitCode == 0 || outcome.said.startsWith(u"001 - Song.mp3: "_s))
            << qPrintable(outcome.said);
        EXPECT_TRUE(outcome.exitCode == 1 || isWhole());
        expectNothingOrTheWhole();
        expectNextRunToSucceed();
        EXPECT_EQ(folder.names(), QStringList{u"001 - Song.mp3"_s});
    }
}

} // namespace
} // namespace orvane::test
