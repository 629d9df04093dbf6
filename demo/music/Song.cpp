#include "demo/music/Song.h"

#include "demo/music/Instruments.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

namespace orvane::demo {
namespace {

constexpr int beatsInBar = 4;

using Scale = std::array<int, 7>;
constexpr Scale majorScale{0, 2, 4, 5, 7, 9, 11};
constexpr Scale minorScale{0, 2, 3, 5, 7, 8, 10};

using Progression = std::array<int, 4>;
/// Degrees of four bars; each begins on the tonic, so that the key is heard.
constexpr std::array<Progression, 4> progressions{{{0, 3, 4, 0}, {0, 5, 3, 4}, {0, 3, 0, 4}, {0, 2, 3, 4}}};

/// Which parts play in a bar.
struct Parts
{
    bool drums = true;
    bool hats = true;
    bool bass = true;
    bool lead = false;
};

/// A song under way: its grid, its harmony and its dice.
class Arrangement
{
public:
    explicit Arrangement(const Song& song)
        : song_(song)
        , dice_(song.seed)
        , progression_(progressions[dice_() % 4])
    {
    }

    int beats() const { return static_cast<int>((song_.seconds - song_.leadIn) * song_.bpm / 60); }

    int bars() const { return (beats() + beatsInBar - 1) / beatsInBar; }

    std::size_t sampleOf(double beat) const
    {
        return static_cast<std::size_t>(std::lround((song_.leadIn + beat * 60 / song_.bpm) * sampleRate));
    }

    double secondsOf(double someBeats) const { return someBeats * 60 / song_.bpm; }

    int degreeOf(int bar) const { return progression_[static_cast<std::size_t>(bar % 4)]; }

    /// Frequency of a degree of the scale, counted from 0, in the octave of the given C.
    double hertz(int degree, double c) const
    {
        const Scale& scale = song_.minor ? minorScale : majorScale;
        const int semitones = song_.tonic + scale[static_cast<std::size_t>(degree % 7)] + 12 * (degree / 7);
        return c * std::exp2(semitones / 12.0);
    }

    /// A quiet beginning, a full middle with a lead in its second half, an end without drums' ornaments.
    Parts partsOf(int bar) const
    {
        const double place = (bar + 0.5) / std::max(1, bars());
        return {.drums = true,
                .hats = place > 0.15 && place<0.92, .bass = place> 0.1,
                .lead = place > 0.45 && place < 0.85};
    }

    unsigned roll() { return static_cast<unsigned>(dice_()); }

private:
    Song song_;
    std::mt19937 dice_;
    Progression progression_;
};

constexpr double bassC = 32.703;
constexpr double padC = 130.813;
constexpr double leadC = 261.626;

void playDrums(Stage& stage, Arrangement& song, int beat, const Parts& parts)
{
    playKick(stage, song.sampleOf(beat), 0.55);
    if (beat % 2 == 1)
        playSnare(stage, song.sampleOf(beat), 0.28, song.roll());
    for (int half = 0; parts.hats && half < 2; ++half)
        playHat(stage, song.sampleOf(beat + 0.5 * half), half == 0 ? 0.10 : 0.16, half == 0 ? -0.3 : 0.3, song.roll());
}

void playHarmony(Stage& stage, const Arrangement& song, int bar, double beats)
{
    const double length = song.secondsOf(beats);
    for (const int step : {0, 2, 4})
        playPad(stage, {.start = song.sampleOf(bar * beatsInBar),
                        .seconds = length,
                        .hertz = song.hertz(song.degreeOf(bar) + step, padC),
                        .gain = 0.11});
}

void playBassLine(Stage& stage, const Arrangement& song, int bar, int beats)
{
    for (int beat = 0; beat < beats; ++beat)
        playBass(stage, {.start = song.sampleOf(bar * beatsInBar + beat),
                         .seconds = song.secondsOf(0.9),
                         .hertz = song.hertz(song.degreeOf(bar), 2 * bassC),
                         .gain = 0.22});
}

void playLead(Stage& stage, Arrangement& song, int bar, int beats)
{
    for (int half = 0; half < 2 * beats; ++half) {
        const unsigned roll = song.roll();
        if (roll % 3 == 0)
            continue;
        const int step = static_cast<int>((roll / 8) % 3) * 2;
        playPluck(stage, {.start = song.sampleOf(bar * beatsInBar + 0.5 * half),
                          .seconds = 0.4,
                          .hertz = song.hertz(song.degreeOf(bar) + step, leadC),
                          .gain = 0.13,
                          .place = half % 2 == 0 ? -0.25 : 0.25});
    }
}

void playBar(Stage& stage, Arrangement& song, int bar)
{
    const int beats = std::min(beatsInBar, song.beats() - bar * beatsInBar);
    const Parts parts = song.partsOf(bar);
    for (int beat = 0; beat < beats; ++beat)
        playDrums(stage, song, bar * beatsInBar + beat, parts);
    playHarmony(stage, song, bar, beats);
    if (parts.bass)
        playBassLine(stage, song, bar, beats);
    if (parts.lead)
        playLead(stage, song, bar, beats);
}

/// A soft knee, so that no sum of parts leaves the range.
void keepInRange(std::vector<double>& channel)
{
    for (double& sample : channel)
        sample = std::tanh(sample);
}

void fadeOut(std::vector<double>& channel)
{
    const std::size_t length = std::min<std::size_t>(channel.size(), sampleRate);
    for (std::size_t index = 0; index < length; ++index)
        channel[channel.size() - 1 - index] *= static_cast<double>(index) / static_cast<double>(length);
}

} // namespace

std::vector<std::vector<double>> compose(const Song& song)
{
    const auto length = static_cast<std::size_t>(std::lround(song.seconds * sampleRate));
    Stage stage{std::vector<double>(length), std::vector<double>(length)};
    Arrangement arrangement(song);
    for (int bar = 0; bar < arrangement.bars(); ++bar)
        playBar(stage, arrangement, bar);
    for (std::vector<double>* channel : {&stage.left, &stage.right}) {
        keepInRange(*channel);
        fadeOut(*channel);
    }
    return {std::move(stage.left), std::move(stage.right)};
}

} // namespace orvane::demo
