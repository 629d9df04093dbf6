#include "benchmarks/Report.h"
#include "demonstration/music/Song.h"
#include "dj/Analysis.h"
#include "dj/Ordering.h"
#include "dj/arithmetic/KeyFinder.h"
#include "dj/arithmetic/OnsetEnvelope.h"
#include "dj/arithmetic/Tempo.h"
#include "mastering/Master.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <sched.h>
#include <thread>

using namespace orvane;
using namespace Qt::Literals::StringLiterals;

namespace {

/// Seconds of the fastest of five runs.
double fastest(const std::function<void()>& work)
{
    double best = 1e9;
    for (int run = 0; run < 5; ++run) {
        const double start = bench::seconds();
        work();
        best = std::min(best, bench::seconds() - start);
    }
    return best;
}

void run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments);
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        std::fprintf(stderr, "%s failed\n", qUtf8Printable(program));
        std::exit(1);
    }
}

/// Keeps what `work` does, and the programs it starts, on one processor.
double onOneProcessor(const std::function<void()>& work)
{
    cpu_set_t before;
    ::sched_getaffinity(0, sizeof before, &before);
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(::sched_getcpu(), &one);
    ::sched_setaffinity(0, sizeof one, &one);
    const double seconds = fastest(work);
    ::sched_setaffinity(0, sizeof before, &before);
    return seconds;
}

void benchAnalyse(const QString& path)
{
    const QUrl url = QUrl::fromLocalFile(path);
    const double analysed = onOneProcessor([&] { DJ::analyse(url); });
    const double lab = onOneProcessor([&] { run(QStringLiteral(ORVANE_LAB), {u"analyse"_s, path}); });
    const double aubio = onOneProcessor([&] { run(u"aubio"_s, {u"tempo"_s, path}); });
    bench::report("analyse a 4 min MP3, one core", analysed, "s");
    bench::report("analyse a 4 min MP3, whole process, one core", lab, "s", "aubio tempo", aubio);
    const double decoded = onOneProcessor([&] { Master::read(path); });
    bench::report("of which decoding", decoded, "s");
}

void benchTwoFiles(const QString& path)
{
    const QUrl url = QUrl::fromLocalFile(path);
    const double oneByOne = fastest([&] {
        DJ::analyse(url);
        DJ::analyse(url);
    });
    const double atOnce = fastest([&] {
        const std::jthread second([&] { DJ::analyse(url); });
        DJ::analyse(url);
    });
    bench::report("analyse two files at once", atOnce, "s", "one after the other", oneByOne);
}

void benchParts(const QString& path)
{
    const Master::Sound sound = Master::read(path);
    const std::vector<double>& samples = sound.channels.front();
    const std::vector<double> envelope = DJ::onsetEnvelope(samples, sound.sampleRate);
    const double bpm = DJ::tempo(envelope, sound.sampleRate);
    bench::report("onset envelope", fastest([&] { DJ::onsetEnvelope(samples, sound.sampleRate); }), "s");
    bench::report("tempo", fastest([&] { DJ::tempo(envelope, sound.sampleRate); }), "s");
    bench::report("grid", fastest([&] { DJ::grid(envelope, bpm, sound.sampleRate); }), "s");
    bench::report("key", fastest([&] { DJ::key(samples, sound.sampleRate); }), "s");
}

void benchOrder()
{
    DJ::Set set;
    for (int index = 0; index < 500; ++index) {
        set.append({.title = QString::number(index),
                    .bpm = 70.0 + index * 37 % 111,
                    .key = {.tonic = index * 5 % 12, .isMinor = index % 3 == 0},
                    .energy = (index * 29 % 101) / 101.0});
    }
    const double seconds = fastest([&] {
        for (const DJ::Ordering style : DJ::allOrderings)
            DJ::order(set, style);
    });
    bench::report("order 500 tracks under every style", seconds * 1000.0, "ms");
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"song.mp3"_s);
    const Channels song = demo::compose({.bpm = 124, .tonic = 9, .minor = true, .seconds = 240, .leadIn = 0.7});
    Master::write(song, demo::sampleRate, {.format = Master::Format::mp3}, path);
    benchAnalyse(path);
    benchTwoFiles(path);
    benchParts(path);
    benchOrder();
}
