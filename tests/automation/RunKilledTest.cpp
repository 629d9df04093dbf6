#include "demonstration/service/StandInService.h"
#include "tests/support/Sandbox.h"
#include "tests/support/SystemCalls.h"
#include "tests/support/TestFolder.h"
#include "trackfiles/tags/Tags.h"

#include <QDir>
#include <QFile>
#include <QMap>
#include <QSet>

#include <algorithm>
#include <gmock/gmock.h>
#include <random>

/// A program that runs the chain over a folder is killed at its system calls, or the disk is full at one of them.
/// Whatever happens, no file is half-written under its final name, every recording stands, and later runs finish.

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

QByteArray soundOf(const QByteArray& file)
{
    return file.sliced(Tags::audioOffset(file));
}

class RunKilled : public testing::Test
{
protected:
    RunKilled()
    {
        demo::LibraryOptions library;
        library.tracks = 2;
        library.plainOnly = true;
        library.shortestSeconds = 1;
        library.longestSeconds = 1;
        const demo::StandInService service(library);
        for (const demo::Track& track : service.tracks())
            recordings.append(service.audioOf(track.id));
        cover = service.artworkOf(service.tracks().first().id);
    }

    /// The folder as it was before any run.
    void prepare() const
    {
        QDir(folder.path(u"in"_s)).removeRecursively();
        for (int index = 0; index < recordings.size(); ++index) {
            const QString stem = u"in/00%1 - "_s.arg(index + 1) + titles.at(index);
            folder.write(stem + u".mp3"_s, recordings.at(index));
            folder.write(stem + u".png"_s, cover);
            folder.write(stem + u" lyrics.txt"_s, "Title: " + titles.at(index).toUtf8() + "\nTags: pop\n\none\ntwo");
        }
    }

    QStringList program() const
    {
        return {QStringLiteral(AUTOMATION_WORKER), folder.path(u"in"_s), folder.path(u"preferences.json"_s)};
    }

    ProgramOutcome runOn() const { return runProgram(program().first(), program().sliced(1)); }

    /// By its name everything in the folder and among its masters, hidden files too.
    QMap<QString, QByteArray> contents() const
    {
        QMap<QString, QByteArray> found;
        for (const QString& below : {u"in/"_s, u"in/Mastered/"_s})
            for (const QString& name : QDir(folder.path(below)).entryList(QDir::Files | QDir::Hidden))
                found.insert(below + name, folder.read(below + name));
        return found;
    }

    QMap<QString, QByteArray> undisturbed() const
    {
        prepare();
        EXPECT_EQ(runOn().exitCode, 0);
        return contents();
    }

    /// The calls that reach for the files, of which a seed picks `most`.
    QList<SystemCall> someCalls(const QStringList& kinds, qsizetype most) const
    {
        prepare();
        EXPECT_EQ(runTraced(program(), notes.path(u"trace"_s)).exitCode, 0);
        QList<SystemCall> calls = callsBetweenMarks(QString::fromUtf8(notes.read(u"trace"_s)));
        calls.removeIf([&kinds](const SystemCall& call) { return !kinds.contains(call.name); });
        std::mt19937 random(seed());
        std::ranges::shuffle(calls, random);
        return calls.first(std::min(most, calls.size()));
    }

    /// Each recording is whole under its old or its new name, and each master is the finished one or absent.
    void expectWholeFiles(const QMap<QString, QByteArray>& whole) const
    {
        for (int index = 0; index < recordings.size(); ++index) {
            const QByteArray old = folder.read(u"in/00%1 - "_s.arg(index + 1) + titles.at(index) + u".mp3"_s);
            const QByteArray fresh = folder.read(u"in/"_s + titles.at(index) + u".mp3"_s);
            EXPECT_NE(old.isNull(), fresh.isNull()) << titles.at(index).toStdString();
            EXPECT_EQ(soundOf(old.isNull() ? fresh : old), soundOf(recordings.at(index)));
            const QString master = u"in/Mastered/"_s + titles.at(index) + u".wav"_s;
            const QByteArray mastered = folder.read(master);
            EXPECT_TRUE(mastered.isNull() || mastered == whole.value(master)) << master.toStdString();
        }
        const QByteArray tracklist = folder.read(u"in/Tracklist.txt"_s);
        EXPECT_TRUE(tracklist.isNull() || tracklist == whole.value(u"in/Tracklist.txt"_s));
    }

    /// A rename met half-way takes a second run until the tag knows the lyrics again.
    void expectLaterRunsToFinish(const QMap<QString, QByteArray>& whole) const
    {
        EXPECT_EQ(runOn().exitCode, 0);
        EXPECT_EQ(contents().keys(), whole.keys());
        EXPECT_EQ(runOn().exitCode, 0);
        EXPECT_TRUE(contents() == whole);
    }

    TestFolder folder;
    TestFolder notes;
    QList<QByteArray> recordings;
    QByteArray cover;
    /// In the order of the alphabet, so that a track keeps its number from run to run.
    const QStringList titles{u"Alba"_s, u"Brook"_s};
};

TEST_F(RunKilled, killedAnywhereNothingIsHalfWrittenAndLaterRunsFinish)
{
    const QMap<QString, QByteArray> whole = undisturbed();
    QSet<QStringList> states;
    // Writes are left out: the event loop's own wake-ups are among them, in another number each time.
    const QStringList kinds{u"fsync"_s, u"rename"_s, u"renameat2"_s, u"fchmod"_s, u"flock"_s, u"pread64"_s};
    for (const SystemCall& call : someCalls(kinds, 20)) {
        SCOPED_TRACE(placeOf(call, u"killed in"_s));
        prepare();
        EXPECT_TRUE(runBroken(program(), call, u"signal=KILL"_s).killed);
        states.insert(contents().keys());
        expectWholeFiles(whole);
        expectLaterRunsToFinish(whole);
    }
    EXPECT_GE(states.size(), 5);
}

TEST_F(RunKilled, aFullDiskAnywhereIsSaidAndLaterRunsFinish)
{
    const QMap<QString, QByteArray> whole = undisturbed();
    int said = 0;
    for (const SystemCall& call : someCalls({u"fsync"_s}, 8)) {
        SCOPED_TRACE(placeOf(call, u"ENOSPC"_s));
        prepare();
        const ProgramOutcome outcome = runBroken(program(), call, u"error=ENOSPC"_s);
        EXPECT_FALSE(outcome.killed);
        said += outcome.said.contains(u"No space left on device") ? 1 : 0;
        expectWholeFiles(whole);
        EXPECT_TRUE(std::ranges::none_of(contents().keys(), [](const QString& name) { return name.contains(u"/."); }));
        expectLaterRunsToFinish(whole);
    }
    EXPECT_GE(said, 3);
}

TEST_F(RunKilled, aFolderThatIsFullOrReadOnlyInAnyStageIsSaidAndLaterRunsFinish)
{
    struct Refusal
    {
        QString file;
        QString said;
    };

    const QList<Refusal> refusals{{u"in/.Tracklist.txt.new"_s, u"Tracklist.txt: "_s},
                                  {u"in/.Alba.mp3.tagging"_s, u"Tagging failed for Alba: Alba.mp3: "_s},
                                  {u"in/Mastered/.Alba.wav.new"_s, u"Mastering failed for Alba: "_s}};
    const QMap<QString, QString> errors{{u"EROFS"_s, u"Read-only file system"_s},
                                        {u"ENOSPC"_s, u"No space left on device"_s}};
    const QMap<QString, QByteArray> whole = undisturbed();
    for (const Refusal& refusal : refusals) {
        for (const QString& error : errors.keys()) {
            SCOPED_TRACE((refusal.file + u' ' + error).toStdString());
            prepare();
            // What is read-only cannot be made anew, what is full can only not be filled.
            const QString call = error == u"EROFS" ? u"openat"_s : u"write,pwrite64,writev"_s;
            const ProgramOutcome outcome = runBrokenAt(program(), folder.path(refusal.file), call, u"error="_s + error);
            EXPECT_FALSE(outcome.killed);
            EXPECT_TRUE(outcome.said.contains(refusal.said) && outcome.said.contains(errors.value(error)))
                << outcome.said.toStdString();
            expectWholeFiles(whole);
            EXPECT_FALSE(contents().contains(refusal.file));
            expectLaterRunsToFinish(whole);
        }
    }
}

TEST_F(RunKilled, aFolderThatTurnsReadOnlyIsSaidAndLosesNothing)
{
    const QMap<QString, QByteArray> whole = undisturbed();
    prepare();
    const QMap<QString, QByteArray> before = contents();
    const ProgramOutcome outcome = runBroken(program(), {.name = u"renameat2"_s, .number = 1}, u"error=EROFS"_s, true);
    EXPECT_FALSE(outcome.killed);
    EXPECT_TRUE(outcome.said.contains(u"Could not rename 001 - Alba.mp3: Read-only file system"_s))
        << outcome.said.toStdString();
    for (const QString& name : before.keys())
        EXPECT_TRUE(contents().contains(name)) << name.toStdString();
    expectLaterRunsToFinish(whole);
}

} // namespace
} // namespace orvane::test
