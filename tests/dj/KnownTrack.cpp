#include "tests/dj/KnownTrack.h"

#include "demonstration/music/Drums.h"
#include "demonstration/music/Harmony.h"
#include "demonstration/music/Voice.h"

#include <cmath>
#include <cstddef>
#include <cstdint>

namespace orvane::test {

namespace {

constexpr double rate = demo::sampleRate;

void strike(std::vector<double>& samples, const std::vector<double>& drum, double second, double gain)
{
    const auto start = std::size_t(std::llround(second * rate));
    for (std::size_t index = 0; index < drum.size() && start + index < samples.size(); ++index)
        samples[start + index] += gain * drum[index];
}

/// What a drum plays in a bar: eighths from 0 to 7.
struct Part
{
    const std::vector<double>* drum;
    double gain;
    std::vector<int> eighths;
};

std::vector<Part> partsOf(Pattern pattern, const demo::DrumKit& kit)
{
    const std::vector<int> everyEighth{0, 1, 2, 3, 4, 5, 6, 7};
    switch (pattern) {
    case Pattern::KickAlone:
        return {{&kit.kick, 0.8, {0, 2, 4, 6}}};
    case Pattern::FourOnTheFloor:
        return {{&kit.kick, 0.8, {0, 2, 4, 6}}, {&kit.clap, 0.35, {2, 6}}, {&kit.openHat, 0.2, {1, 3, 5, 7}}};
    case Pattern::Backbeat:
        return {{&kit.kick, 0.8, {0, 4}}, {&kit.snare, 0.5, {2, 6}}, {&kit.closedHat, 0.25, everyEighth}};
    case Pattern::Broken:
        return {{&kit.kick, 0.8, {0, 3, 5}}, {&kit.snare, 0.5, {2, 6}}, {&kit.closedHat, 0.25, everyEighth}};
    }
    return {};
}

double powerOf(const std::vector<double>& samples)
{
    double sum = 0.0;
    for (const double sample : samples)
        sum += sample * sample;
    return sum / double(samples.size());
}

/// Even noise from -1 to 1, whose power is a third.
void addNoise(std::vector<double>& samples, double power)
{
    const double gain = std::sqrt(3.0 * power);
    std::uint64_t state = 88'172'645'463'325'252ULL;
    for (double& sample : samples) {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        sample += gain * (double(state >> 11) / double(1ULL << 52) - 1.0);
    }
}

} // namespace

KnownTrack playKit(const KnownBeat& beat)
{
    static const demo::DrumKit kit = demo::makeDrumKit(3);
    const std::vector<Part> parts = partsOf(beat.pattern, kit);
    const double beatSeconds = 60.0 / beat.bpm;
    KnownTrack track{.samples = std::vector<double>(std::size_t(beat.seconds * rate)), .beats = {}};
    const auto timeOf = [&](int bar, int eighth) {
        const double within = eighth % 2 == 0 ? 0.0 : beat.swing;
        return beat.intro + (bar * 4 + eighth / 2 + within) * beatSeconds;
    };
    for (int bar = 0; timeOf(bar, 0) < beat.seconds; ++bar) {
        for (const Part& part : parts) {
            for (const int eighth : part.eighths)
                strike(track.samples, *part.drum, timeOf(bar, eighth), part.gain);
        }
        for (int eighth = 0; eighth < 8 && timeOf(bar, eighth) < beat.seconds; eighth += 2)
            track.beats.push_back(timeOf(bar, eighth));
    }
    if (beat.noise > -100.0)
        addNoise(track.samples, powerOf(track.samples) * std::pow(10.0, beat.noise / 10.0));
    return track;
}

std::vector<double> playChords(const KnownHarmony& known)
{
    constexpr double bpm = 100.0;
    constexpr double barSeconds = 4.0 * 60.0 / bpm;
    constexpr double midC = 130.813;
    // The sequencer takes its loop of chords from every third seed.
    const demo::Harmony harmony({.tonic = known.tonic, .minor = known.minor, .seed = unsigned(3 * known.loop)});
    demo::Stage stage(std::size_t(known.seconds * rate));
    for (int bar = 0; bar * barSeconds < known.seconds; ++bar) {
        const auto start = std::size_t(std::llround(bar * barSeconds * rate));
        for (const int third : {0, 2, 4}) {
            const int degree = harmony.nearestInChord(1 + third, bar);
            demo::play(stage, {.start = start, .seconds = barSeconds, .hertz = harmony.hertz(degree, midC)},
                       {.attack = 0.05, .sustain = 0.9, .bright = 2600, .dark = 1100});
        }
        demo::play(stage,
                   {.start = start, .seconds = barSeconds, .hertz = harmony.hertz(harmony.rootOf(bar), midC / 2)},
                   {.sustain = 0.7, .bright = 1500, .dark = 350});
    }
    if (known.drums > 0.0) {
        const KnownTrack kit = playKit({.bpm = bpm, .seconds = known.seconds});
        for (std::size_t index = 0; index < stage.size(); ++index)
            stage.left[index] += known.drums * kit.samples[index];
    }
    return stage.left;
}

} // namespace orvane::test
