#include "benchmarks/Report.h"
#include "demonstration/music/Song.h"
#include "dj/Analysis.h"
#include "dj/Ordering.h"
#include "dj/Render.h"
#include "dj/arithmetic/KeyFinder.h"
#include "dj/arithmetic/OnsetEnvelope.h"
#include "dj/arithmetic/Tempo.h"
#include "mastering/Master.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <sched.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

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
    constexpr std::array names{"energyArc", "keyJourney", "shuffle", "asListed"};
    for (const DJ::Ordering style : DJ::allOrderings) {
        const double seconds = fastest([&] { DJ::order(set, style); });
        bench::report(std::string("order 500 tracks, ") + names[std::size_t(style)], seconds * 1000.0, "ms");
    }
}

/// Does `work` in a child process, so that this one stays small; gives its peak memory in MiB.
double inChild(const std::function<void()>& work)
{
    const pid_t child = ::fork();
    if (child == 0) {
        work();
        ::_exit(0);
    }
    int status = 0;
    rusage usage = {};
    ::wait4(child, &status, 0, &usage);
    if (status != 0) {
        std::fprintf(stderr, "a child process failed\n");
        std::exit(1);
    }
    return double(usage.ru_maxrss) / 1024.0;
}

demo::Song songAt(int index)
{
    return {.bpm = 118.0 + 3 * index,
            .tonic = index * 5 % 12,
            .minor = index % 2 == 0,
            .seconds = 240,
            .leadIn = 0.7,
            .seed = unsigned(index + 1)};
}

/// Four songs of four minutes in turn, each under three names.
QStringList makeSongs(const QTemporaryDir& folder)
{
    QStringList paths;
    for (int index = 0; index < 12; ++index) {
        const QString path = folder.filePath(u"%1.mp3"_s.arg(index));
        if (index < 4) {
            inChild([&] {
                Master::write(demo::compose(songAt(index)), demo::sampleRate, {.format = Master::Format::mp3}, path);
            });
        } else {
            QFile::copy(paths[index - 4], path);
        }
        paths.append(path);
    }
    return paths;
}

DJ::Set analysed(const QStringList& paths)
{
    DJ::Set set;
    for (const QString& path : paths)
        set.append(DJ::analyse(QUrl::fromLocalFile(path)));
    return set;
}

/// Seconds and peak memory in MiB of mixing so many of the songs, in a process of its own.
struct Cost
{
    double seconds = 0.0;
    double mebibytes = 0.0;
    double soundSeconds = 0.0;
};

Cost mixed(const DJ::Set& set, Master::Format format, const QString& folder)
{
    Cost cost;
    double told[2] = {};
    int ends[2] = {};
    if (::pipe(ends) != 0)
        std::exit(1);
    cost.mebibytes = inChild([&] {
        const double start = bench::seconds();
        const DJ::Mix mix = DJ::render(set, {.keyNudge = 2, .format = format}, folder);
        const double result[2] = {bench::seconds() - start, mix.duration};
        if (::write(ends[1], result, sizeof result) != sizeof result)
            ::_exit(1);
    });
    if (::read(ends[0], told, sizeof told) != sizeof told)
        std::exit(1);
    ::close(ends[0]);
    ::close(ends[1]);
    cost.seconds = told[0];
    cost.soundSeconds = told[1];
    return cost;
}

Cost reportMixed(const DJ::Set& set, Master::Format format, const QTemporaryDir& folder)
{
    const Cost cost = mixed(set, format, folder.filePath(u"mixes"_s));
    const std::string name =
        "mix " + std::to_string(set.size()) + " tracks of 4 min to " + rawValue(format).toStdString();
    bench::report(name, cost.seconds, "s", "the mix's length", cost.soundSeconds);
    bench::report(name + ", times real time", cost.soundSeconds / cost.seconds, "x");
    bench::report(name + ", peak memory", cost.mebibytes, "MiB", "a track as doubles",
                  240.0 * 44100.0 * 2.0 * sizeof(double) / 1024.0 / 1024.0);
    return cost;
}

/// A long set as WAV, and a short one in every format: what encoding adds shows in either.
void benchRender(const DJ::Set& set, const QTemporaryDir& folder)
{
    const Cost many = reportMixed(set, Master::Format::wav, folder);
    for (const Master::Format format : Master::allFormats) {
        const Cost few = reportMixed(set.first(4), format, folder);
        if (format == Master::Format::wav)
            bench::report("mix of 12 tracks, peak memory", many.mebibytes, "MiB", "of 4 tracks", few.mebibytes);
    }
}

void benchStretch(const QTemporaryDir& folder, const QString& mp3)
{
    const QString wav = folder.filePath(u"song.wav"_s);
    const QString out = folder.filePath(u"stretched.wav"_s);
    inChild([&] { Master::write(Master::read(mp3).channels, demo::sampleRate, {.format = Master::Format::wav}, wav); });
    const double lab = fastest([&] { run(QStringLiteral(ORVANE_LAB), {u"stretch"_s, wav, out, u"1.05"_s}); });
    const double atempo = fastest([&] {
        run(u"ffmpeg"_s,
            {u"-v"_s, u"error"_s, u"-y"_s, u"-i"_s, wav, u"-af"_s, u"atempo=1.05"_s, u"-c:a"_s, u"pcm_s24le"_s, out});
    });
    const double rubberband = fastest([&] { run(u"rubberband"_s, {u"-q"_s, u"--tempo"_s, u"1.05"_s, wav, out}); });
    bench::report("stretch 4 min of stereo, whole process", lab, "s", "ffmpeg atempo", atempo);
    bench::report("stretch 4 min of stereo, whole process", lab, "s", "rubberband", rubberband);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    const QStringList songs = makeSongs(folder);
    benchStretch(folder, songs[0]);
    benchAnalyse(songs[0]);
    benchTwoFiles(songs[0]);
    benchParts(songs[0]);
    benchOrder();
    benchRender(analysed(songs), folder);
}
