#include "benchmarks/Report.h"
#include "mastering/Master.h"
#include "mastering/arithmetic/Limiter.h"
#include "mastering/arithmetic/TruePeak.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ebur128.h>
#include <fstream>
#include <functional>
#include <memory>
#include <random>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace orvane;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double rate = 44100.0;
constexpr double bytesPerMebibyte = 1024.0 * 1024.0;

/// A beat, a chord and dull noise, that swell.
Channels music(double minutes)
{
    std::mt19937 generator(7);
    std::normal_distribution<double> noise(0.0, 0.1);
    Channels channels(2, std::vector<double>(std::size_t(minutes * 60.0 * rate)));
    for (auto& channel : channels) {
        double dull = 0.0;
        for (std::size_t frame = 0; frame < channel.size(); ++frame) {
            const double time = double(frame) / rate;
            const double beat = std::fmod(time, 0.5);
            dull += 0.2 * (noise(generator) - dull);
            channel[frame] = dull * (1.0 + 0.8 * std::sin(time)) + 0.1 * std::sin(2770.0 * time) +
                             0.5 * std::exp(-12.0 * beat) * std::sin(380.0 * beat);
        }
    }
    Master::amplify(channels, 0.9 / Master::largestMagnitude(channels));
    return channels;
}

/// Seconds of the fastest of three runs.
double fastest(const std::function<void()>& work)
{
    double best = 1e9;
    for (int run = 0; run < 3; ++run) {
        const double start = bench::seconds();
        work();
        best = std::min(best, bench::seconds() - start);
    }
    return best;
}

void libraryMeasures(const std::vector<double>& interleaved)
{
    const auto destroy = [](ebur128_state* state) { ebur128_destroy(&state); };
    const std::unique_ptr<ebur128_state, decltype(destroy)> state(
        ebur128_init(2, unsigned(rate),
                     EBUR128_MODE_I | EBUR128_MODE_LRA | EBUR128_MODE_SAMPLE_PEAK | EBUR128_MODE_TRUE_PEAK),
        destroy);
    double value = 0.0;
    ebur128_add_frames_double(state.get(), interleaved.data(), interleaved.size() / 2);
    ebur128_loudness_global(state.get(), &value);
    ebur128_loudness_range(state.get(), &value);
    ebur128_true_peak(state.get(), 0, &value);
    ebur128_sample_peak(state.get(), 0, &value);
}

std::vector<double> interleave(const Channels& channels)
{
    std::vector<double> samples;
    for (std::size_t frame = 0; frame < channels.front().size(); ++frame) {
        for (const auto& channel : channels)
            samples.push_back(channel[frame]);
    }
    return samples;
}

void benchMeasure()
{
    const Channels channels = music(4.0);
    const std::vector<double> interleaved = interleave(channels);
    const double library = fastest([&] { libraryMeasures(interleaved); });
    const double one = fastest([&] { Master::measure(channels, rate, Master::Threads::One); });
    const double all = fastest([&] { Master::measure(channels, rate, Master::Threads::All); });
    bench::report("measure, 4 min, one thread", one, "s", "libebur128", library);
    bench::report("measure, 4 min, all threads", all, "s", "libebur128", library);
    bench::report("true peak, 4 min", fastest([&] { Master::peakDB(channels, rate); }), "s");
    Channels limited = channels;
    bench::report("limit by 6 dB, 4 min", fastest([&] { Master::limit(limited, -6.0, rate); }), "s");
}

void benchGrowth()
{
    for (const double minutes : {1.0, 4.0, 16.0}) {
        const Channels channels = music(minutes);
        const std::string name = "measure, " + std::to_string(int(minutes)) + " min";
        bench::report(name, fastest([&] { Master::measure(channels, rate); }), "s");
    }
}

/// Runs a program and gives its seconds and its peak memory in MiB.
struct Cost
{
    double seconds = 0.0;
    double mebibytes = 0.0;
};

Cost costOf(const QStringList& command)
{
    std::vector<QByteArray> words;
    for (const QString& word : command)
        words.push_back(word.toLocal8Bit());
    std::vector<char*> arguments;
    for (QByteArray& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const double start = bench::seconds();
    const pid_t child = ::fork();
    if (child == 0) {
        std::freopen("/dev/null", "w", stdout);
        std::freopen("/dev/null", "w", stderr);
        ::execvp(arguments[0], arguments.data());
        ::_exit(127);
    }
    int status = 0;
    rusage usage = {};
    ::wait4(child, &status, 0, &usage);
    if (status != 0) {
        std::fprintf(stderr, "%s failed\n", qUtf8Printable(command.join(u' ')));
        std::exit(1);
    }
    return {.seconds = bench::seconds() - start, .mebibytes = double(usage.ru_maxrss) / 1024.0};
}

Cost cheapest(const QStringList& command)
{
    Cost best = costOf(command);
    const Cost again = costOf(command);
    return {.seconds = std::min(best.seconds, again.seconds), .mebibytes = std::max(best.mebibytes, again.mebibytes)};
}

QStringList ffmpeg(const QString& input, const QStringList& options)
{
    return QStringList{u"ffmpeg"_s, u"-v"_s, u"error"_s, u"-y"_s, u"-i"_s, input} + options;
}

/// Composes the track that is mastered, in a process of its own: a program's peak memory begins with what its parent
/// held.
void makeSources(double minutes, const QString& mp3, const QString& source)
{
    const pid_t child = ::fork();
    if (child == 0) {
        Master::write(music(minutes), rate, {.format = Master::Format::mp3}, mp3);
        Master::write(Master::read(mp3).channels, rate, {.format = Master::Format::wav}, source);
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
}

QStringList lab(const QString& input, const QString& output, const QString& target, const QString& format)
{
    return {QStringLiteral(ORVANE_LAB),
            u"master"_s,
            input,
            output,
            u"--target"_s,
            target,
            u"--ceiling"_s,
            u"-1"_s,
            u"--format"_s,
            format};
}

double mebibytesOf(double minutes)
{
    return minutes * 60.0 * rate * 2.0 * sizeof(double) / bytesPerMebibyte;
}

/// Time and memory by the length of the file; of an hour's it is told what the two lengths lead to.
void benchMasterGrowth(const QTemporaryDir& folder)
{
    const QString mp3 = folder.filePath(u"growing.mp3"_s);
    const QString out = folder.filePath(u"grown"_s);
    std::vector<Cost> costs;
    for (const double minutes : {1.0, 4.0, 16.0}) {
        makeSources(minutes, mp3, out);
        costs.push_back(cheapest(lab(mp3, out, u"-9"_s, u"wav"_s)));
        const std::string name = "master MP3 to WAV, limited, " + std::to_string(int(minutes)) + " min";
        bench::report(name, costs.back().seconds, "s");
        bench::report(name + ", peak memory", costs.back().mebibytes, "MiB", "the signal as doubles",
                      mebibytesOf(minutes));
    }
    const double perMinute = (costs[2].mebibytes - costs[0].mebibytes) / 15.0;
    bench::report("master MP3 to WAV, limited, peak memory that 60 min lead to", costs[0].mebibytes + 59.0 * perMinute,
                  "MiB", "the signal as doubles", mebibytesOf(60.0));
}

void benchMaster(const QTemporaryDir& folder)
{
    const QString mp3 = folder.filePath(u"in.mp3"_s);
    const QString source = folder.filePath(u"in.wav"_s);
    makeSources(4.0, mp3, source);
    const QString out = folder.filePath(u"out"_s);
    const double loudnorm =
        2.0 * cheapest(ffmpeg(mp3, {u"-af"_s, u"loudnorm=print_format=json"_s, u"-f"_s, u"null"_s, u"-"_s})).seconds;
    const double chain = cheapest(ffmpeg(mp3, {u"-af"_s, u"ebur128=peak=true"_s, u"-f"_s, u"null"_s, u"-"_s})).seconds +
                         cheapest(ffmpeg(mp3, {u"-af"_s, u"volume=3dB,alimiter=limit=0.89"_s, u"-c:a"_s, u"pcm_s24le"_s,
                                               out + u".wav"_s}))
                             .seconds;
    const double lame = cheapest({u"lame"_s, u"--quiet"_s, u"-q"_s, u"2"_s, u"-b"_s, u"320"_s, source, out}).seconds;
    const Cost limited = cheapest(lab(mp3, out, u"-9"_s, u"wav"_s));
    const Cost unlimited = cheapest(lab(mp3, out, u"-35"_s, u"wav"_s));
    const Cost encoded = cheapest(lab(mp3, out, u"-9"_s, u"mp3"_s));
    bench::report("master MP3 to WAV, limited", limited.seconds, "s", "ffmpeg loudnorm, two passes", loudnorm);
    bench::report("master MP3 to WAV, limited", limited.seconds, "s", "ffmpeg ebur128 and alimiter", chain);
    bench::report("master MP3 to WAV, unlimited", unlimited.seconds, "s", "ffmpeg loudnorm, two passes", loudnorm);
    bench::report("master MP3 to WAV, unlimited", unlimited.seconds, "s", "ffmpeg ebur128 and alimiter", chain);
    bench::report("master MP3 to MP3, limited", encoded.seconds, "s", "1.15 times lame, and master to WAV",
                  1.15 * lame + limited.seconds);
    const double signal = mebibytesOf(4.0);
    bench::report("master, peak memory, limited", limited.mebibytes, "MiB", "the signal as doubles", signal);
    bench::report("master, peak memory, unlimited", unlimited.mebibytes, "MiB", "the signal as doubles", signal);
    bench::report("master to MP3, peak memory", encoded.mebibytes, "MiB", "the signal as doubles", signal);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    // Processes come first, while this one is small.
    benchMaster(folder);
    benchMasterGrowth(folder);
    benchMeasure();
    benchGrowth();
}
