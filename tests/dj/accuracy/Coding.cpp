#include "tests/dj/accuracy/Coding.h"

#include "demonstration/music/Song.h"
#include "dj/Analysis.h"
#include "mastering/Master.h"
#include "mastering/arithmetic/InParallel.h"
#include "tests/dj/accuracy/Accuracy.h"
#include "tests/support/TestFolder.h"

#include <array>
#include <cstddef>
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

struct Heard
{
    std::string name;
    DJ::Analysis track;
};

/// What is heard of a song: first as it is, then in each form.
std::vector<Heard> hear(int number, const TestFolder& folder)
{
    const Master::Sound song{.channels = demo::compose({.bpm = 74.0 + 4.3 * number,
                                                        .tonic = number % 12,
                                                        .minor = number >= 12,
                                                        .seconds = 20.0,
                                                        .seed = unsigned(number)}),
                             .sampleRate = demo::sampleRate};
    std::vector<Heard> heard{{"", DJ::analyse(song, {})}};
    for (const Coding& coding : codings) {
        const QString path = folder.path(u"%1"_s.arg(number));
        Master::write(song.channels, song.sampleRate, coding.output, path);
        heard.push_back({coding.name, DJ::analyse(QUrl::fromLocalFile(path))});
        if (coding.output.format == Master::Format::mp3)
            heard.push_back({coding.name + ", its delay taken away"s, DJ::analyse(earlier(Master::read(path)), {})});
    }
    heard.push_back({"none, but as late as an MP3", DJ::analyse(later(song), {})});
    return heard;
}

} // namespace

std::vector<HeardCoding> hearCodings()
{
    constexpr double sameTempo = 0.001;
    const TestFolder folder;
    std::array<std::vector<Heard>, 24> songs;
    inParallel(songs.size(), processorCount(), [&](std::size_t number) { songs[number] = hear(int(number), folder); });
    std::vector<HeardCoding> all;
    for (std::size_t form = 1; form < songs[0].size(); ++form) {
        HeardCoding heard{.name = songs[0][form].name, .songs = int(songs.size())};
        for (const std::vector<Heard>& song : songs) {
            heard.sameTempo += errorOf(song[form].track.bpm, song[0].track.bpm) <= sameTempo ? 1 : 0;
            heard.sameKey += song[form].track.key == song[0].track.key ? 1 : 0;
        }
        all.push_back(heard);
    }
    return all;
}

} // namespace orvane::test
