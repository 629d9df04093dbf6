#include "tests/dj/accuracy/Coding.h"

#include "demonstration/music/Song.h"
#include "dj/Analysis.h"
#include "dj/arithmetic/Mono.h"
#include "dj/arithmetic/OnsetEnvelope.h"
#include "dj/arithmetic/Tempo.h"
#include "mastering/Master.h"
#include "mastering/arithmetic/InParallel.h"
#include "tests/dj/accuracy/Accuracy.h"
#include "tests/support/TestFolder.h"

#include <QProcess>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <stdexcept>
#include <string>
#include <vector>

namespace orvane::test {

namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::string_literals;

struct Coding
{
    const char* name;
    Master::Output output;
};

constexpr std::array codings{
    Coding{.name = "WAV", .output = {.format = Master::Format::wav}},
    Coding{.name = "FLAC", .output = {.format = Master::Format::flac}},
    Coding{.name = "MP3, 320 kbit/s", .output = {.format = Master::Format::mp3, .mp3Rate = Master::MP3Rate::v320}},
    Coding{.name = "MP3, 192 kbit/s", .output = {.format = Master::Format::mp3, .mp3Rate = Master::MP3Rate::v192}},
    Coding{.name = "MP3, 128 kbit/s", .output = {.format = Master::Format::mp3, .mp3Rate = Master::MP3Rate::v128}},
};

/// Samples by which an MP3 that does not tell its encoder's delay is late: an empty frame and what encoding and
/// decoding take.
constexpr std::size_t delay = 1152 + 1105;

Master::Sound later(Master::Sound sound)
{
    for (auto& channel : sound.channels)
        channel.insert(channel.begin(), delay, 0.0);
    return sound;
}

Master::Sound earlier(Master::Sound sound)
{
    for (auto& channel : sound.channels)
        channel.erase(channel.begin(), channel.begin() + delay);
    return sound;
}

/// What is in an MP3 of the lame program, which tells its delay, so that the reader takes it away again.
Master::Sound throughLame(const QString& wav, int bitRate)
{
    const QString path = wav + u".mp3"_s;
    QProcess lame;
    lame.start(u"lame"_s, {u"--quiet"_s, u"-q"_s, u"2"_s, u"-b"_s, QString::number(bitRate), wav, path});
    if (!lame.waitForFinished(-1) || lame.exitStatus() != QProcess::NormalExit || lame.exitCode() != 0)
        throw std::runtime_error("lame failed");
    return Master::read(path);
}

struct Heard
{
    std::string name;
    DJ::Analysis track;
    /// By how much, as a fraction of its score, the best lag of the song as it is leads all that are another tempo.
    double lead = 0.0;
};

/// What is heard of a song: first as it is, then in each form.
using HeardSong = std::vector<Heard>;

std::vector<double> onsets(const Master::Sound& sound)
{
    return DJ::onsetEnvelope(DJ::toMono(sound.channels), sound.sampleRate);
}

/// Lags as near to each other as the grid may move a tempo are one tempo to it.
double leadOf(std::size_t best, const std::vector<double>& envelope)
{
    constexpr double reach = 0.05;
    const double mean = std::accumulate(envelope.begin(), envelope.end(), 0.0) / double(envelope.size());
    const auto scoreAt = [&](std::size_t lag) {
        double sum = 0.0;
        for (std::size_t frame = lag; frame < envelope.size(); ++frame)
            sum += (envelope[frame] - mean) * (envelope[frame - lag] - mean);
        return sum / double(envelope.size() - lag);
    };
    double other = 0.0;
    for (std::size_t lag = 29; lag <= 73; ++lag) {
        if (errorOf(double(lag), double(best)) > reach)
            other = std::max(other, scoreAt(lag));
    }
    return 1.0 - other / scoreAt(best);
}

HeardSong hear(int number, const TestFolder& folder)
{
    const Master::Sound song{.channels = demo::compose({.bpm = 74.0 + 4.3 * number,
                                                        .tonic = number % 12,
                                                        .minor = number >= 12,
                                                        .seconds = 20.0,
                                                        .seed = unsigned(number)}),
                             .sampleRate = demo::sampleRate};
    const std::size_t lag = *DJ::tempoLag(onsets(song), song.sampleRate);
    HeardSong heard;
    const auto add = [&](const std::string& name, const Master::Sound& sound) {
        heard.push_back({.name = name, .track = DJ::analyse(sound, {}), .lead = leadOf(lag, onsets(sound))});
    };
    add("", song);
    const QString wav = folder.path(u"%1.wav"_s.arg(number));
    Master::write(song.channels, song.sampleRate, {.format = Master::Format::wav}, wav);
    for (const Coding& coding : codings) {
        const QString path = folder.path(u"%1"_s.arg(number));
        Master::write(song.channels, song.sampleRate, coding.output, path);
        const Master::Sound read = Master::read(path);
        add(coding.name, read);
        if (coding.output.format != Master::Format::mp3)
            continue;
        add(coding.name + ", its delay taken away"s, earlier(read));
        add(coding.name + ", by lame, which tells its delay"s, throughLame(wav, rawValue(coding.output.mp3Rate)));
    }
    add("none, but as late as an MP3", later(song));
    return heard;
}

constexpr double sameTempo = 0.001;
constexpr double nearTempo = 0.01;

void add(const DJ::Analysis& track, const DJ::Analysis& plain, HeardCoding& heard)
{
    const double difference = errorOf(track.bpm, plain.bpm);
    heard.sameTempo += difference <= sameTempo ? 1 : 0;
    heard.within1 += difference <= nearTempo ? 1 : 0;
    heard.within1AnyOctave += errorWithoutOctave(track.bpm, plain.bpm) <= nearTempo ? 1 : 0;
    heard.farthest = std::max(heard.farthest, difference);
    heard.sameKey += track.key == plain.key ? 1 : 0;
}

void add(const HeardSong& song, TempoLeads& leads)
{
    bool isChanged = false;
    for (const Heard& form : song) {
        isChanged = isChanged || errorOf(form.track.bpm, song[0].track.bpm) > nearTempo;
        leads.farthestMove = std::max(leads.farthestMove, std::abs(form.lead - song[0].lead));
    }
    if (isChanged)
        leads.changed.insert(std::upper_bound(leads.changed.begin(), leads.changed.end(), song[0].lead), song[0].lead);
}

} // namespace

HeardCodings hearCodings()
{
    const TestFolder folder;
    std::array<HeardSong, 24> songs;
    inParallel(songs.size(), processorCount(), [&](std::size_t number) { songs[number] = hear(int(number), folder); });
    HeardCodings heard;
    for (std::size_t form = 1; form < songs[0].size(); ++form) {
        HeardCoding coding{.name = songs[0][form].name, .songs = int(songs.size())};
        for (const HeardSong& song : songs)
            add(song[form].track, song[0].track, coding);
        heard.all.push_back(coding);
    }
    for (const HeardSong& song : songs)
        add(song, heard.leads);
    return heard;
}

} // namespace orvane::test
