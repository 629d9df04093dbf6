#include "mastering/Master.h"
#include "tests/dj/MixFiles.h"
#include "tests/support/Sandbox.h"
#include "tests/support/SystemCalls.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <csignal>
#include <random>
#include <sys/resource.h>

using namespace orvane;
using namespace orvane::test;
using namespace Qt::Literals::StringLiterals;
using DJ::MixSettings;

namespace {

struct RenderFault : MixFiles
{
    QStringList mixes() const { return QDir(out()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot); }

    QStringList labMix(const DJ::Set& set) const
    {
        QStringList command{QStringLiteral(ORVANE_LAB), u"mix"_s, out()};
        for (const DJ::Analysis& one : set)
            command.append(one.url.toLocalFile());
        return command;
    }
};

/// The calls of `name` that the program's first thread makes, from a trace of all.
int callsOfFirstThread(const QString& trace, const QString& name)
{
    const QString thread = trace.section(u' ', 0, 0);
    return int(trace.count(QRegularExpression(u"^%1 +%2\\("_s.arg(thread, name), QRegularExpression::MultilineOption)));
}

} // namespace

TEST_F(RenderFault, aFullDiskMidRenderLeavesNothingAndSaysWhy)
{
    const DJ::Set set = noises(3, 8.0);
    for (const Master::Format format : Master::allFormats) {
        const MixSettings settings{.matchTempo = false, .levelMatch = false, .format = format};
        const qint64 size = QFileInfo(render(set, settings).url.toLocalFile()).size();
        for (const int tenth : {0, 1, 4, 7, 9}) {
            QDir(out()).removeRecursively();
            const int code = inChild([&] {
                std::signal(SIGXFSZ, SIG_IGN);
                const rlimit full = {.rlim_cur = rlim_t(size * tenth / 10), .rlim_max = RLIM_INFINITY};
                ::setrlimit(RLIMIT_FSIZE, &full);
                int begun = 0;
                const int failed = errorOf(
                    [&] { DJ::render(set, settings, out(), u"a"_s, {}, [&](const QString&, double) { ++begun; }); });
                // The render goes on to its end all the same; only an MP3 is opened before anything is written.
                return begun == 3 || tenth == 0 ? failed : -2;
            });
            EXPECT_EQ(code, EFBIG) << qPrintable(rawValue(format)) << " at " << tenth;
            EXPECT_EQ(mixes(), QStringList());
        }
    }
}

TEST_F(RenderFault, aFullDiskIsNamedWithTheFile)
{
    const DJ::Set set = noises(2, 5.0);
    const QString command = u'\'' + labMix(set).join(u"' '"_s) + u'\'';
    const ProgramOutcome outcome =
        runProgram(u"bash"_s, {u"-c"_s, u"trap '' XFSZ; ulimit -f 100; exec %1"_s.arg(command)});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.said.toStdString(), "Orvane DJ Mix.wav: File too large\n");
    EXPECT_EQ(mixes(), QStringList());
}

TEST_F(RenderFault, aRenderKilledAtAnyCallLeavesNothingAtTheFinalName)
{
    const DJ::Set set = noises(3, 4.0);
    const QString trace = folder.path(u"trace"_s);
    ASSERT_EQ(runTraced(labMix(set), trace).exitCode, 0);
    const QString calls = QString::fromLocal8Bit(folder.read(u"trace"_s));
    const QByteArray whole = folder.read(u"mixes/Orvane DJ Mix.wav"_s);
    ASSERT_GT(whole.size(), 500'000);
    std::mt19937 dice(seed());
    QList<SystemCall> places{{u"rename"_s, 1}, {u"rename"_s, 2}, {u"fsync"_s, 1}, {u"fsync"_s, 2}};
    for (const QString& name : {u"write"_s, u"openat"_s, u"close"_s, u"mmap"_s, u"munmap"_s, u"lseek"_s}) {
        const int count = callsOfFirstThread(calls, name);
        ASSERT_GT(count, 2) << name.toStdString();
        for (int time = 0; time < (name == u"write"_s ? 6 : 2); ++time)
            places.append({name, std::uniform_int_distribution(1, count)(dice)});
    }
    int killedBefore = 0;
    int unreached = 0;
    for (const SystemCall& place : places) {
        QDir(out()).removeRecursively();
        const ProgramOutcome outcome = runBroken(labMix(set), place, u"signal=KILL"_s);
        const QByteArray left = folder.read(u"mixes/Orvane DJ Mix.wav"_s);
        EXPECT_TRUE(left.isNull() || left == whole) << placeOf(place, u"KILL"_s);
        // Threads share the calls anew in each run, and none may come to that one; then the mix is simply made.
        if (!outcome.killed && outcome.exitCode == 0) {
            EXPECT_TRUE(left == whole) << placeOf(place, u"KILL"_s);
            ++unreached;
        }
        killedBefore += left.isNull() ? 1 : 0;
    }
    EXPECT_GT(killedBefore, 5);
    EXPECT_LT(unreached, 5);
    EXPECT_EQ(runProgram(labMix(set).first(), labMix(set).sliced(1)).exitCode, 0);
    EXPECT_EQ(mixes(), (QStringList{u"Orvane DJ Mix.txt"_s, u"Orvane DJ Mix.wav"_s}));
    EXPECT_TRUE(folder.read(u"mixes/Orvane DJ Mix.wav"_s) == whole);
}
