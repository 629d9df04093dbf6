#include "tests/dj/accuracy/Accuracy.h"

#include "dj/arithmetic/Grid.h"
#include "dj/arithmetic/KeyFinder.h"
#include "dj/arithmetic/OnsetEnvelope.h"
#include "dj/arithmetic/Tempo.h"
#include "mastering/arithmetic/InParallel.h"

#include <algorithm>
#include <cmath>

namespace orvane::test {

namespace {

constexpr double rate = 44100.0;

constexpr std::array tempi{72.0,  75.0,  82.0,  87.0,  90.0,  96.0,  100.0, 105.0, 110.0, 118.0, 120.0,
                           124.0, 126.0, 128.0, 132.0, 138.0, 140.0, 150.0, 160.0, 170.0, 174.0, 178.0};

std::vector<HeardBeat> kits()
{
    std::vector<HeardBeat> all;
    for (const Pattern pattern : allPatterns) {
        for (const double bpm : tempi) {
            const auto add = [&](const char* kind, const KnownBeat& truth) {
                all.push_back({.truth = truth, .kind = kind});
            };
            add("straight, from the first sample", {.bpm = bpm, .pattern = pattern});
            add("straight, 0.37 s in", {.bpm = bpm, .pattern = pattern, .intro = 0.37});
            add("swung, 62 %", {.bpm = bpm, .pattern = pattern, .intro = 0.2, .swing = 0.62});
            add("under noise at 10 dB", {.bpm = bpm, .pattern = pattern, .intro = 0.2, .noise = -10.0});
            add("under noise at 0 dB", {.bpm = bpm, .pattern = pattern, .intro = 0.2, .noise = 0.0});
            add("after 8 s of silence", {.bpm = bpm, .pattern = pattern, .intro = 8.05});
        }
    }
    return all;
}

void hear(HeardBeat& heard)
{
    const KnownTrack track = playKit(heard.truth);
    const std::vector<double> envelope = DJ::onsetEnvelope(track.samples, rate);
    const DJ::Grid grid = DJ::grid(envelope, DJ::tempo(envelope, rate), rate);
    heard.bpm = grid.bpm;
    for (const double beat : track.beats) {
        const double lines = (beat - grid.phase) / grid.beatSeconds();
        heard.errors.push_back((std::round(lines) - lines) * grid.beatSeconds() * 1000.0);
    }
}

} // namespace

std::vector<HeardBeat> hearKits()
{
    std::vector<HeardBeat> all = kits();
    inParallel(all.size(), processorCount(), [&](std::size_t index) { hear(all[index]); });
    return all;
}

std::vector<HeardKey> hearChords()
{
    std::vector<HeardKey> all;
    std::vector<KnownHarmony> harmonies;
    for (const double drums : {0.0, 0.5}) {
        for (int tonic = 0; tonic < 12; ++tonic) {
            for (const bool minor : {false, true}) {
                for (int loop = 0; loop < 4; ++loop) {
                    harmonies.push_back({.tonic = tonic, .minor = minor, .loop = loop, .drums = drums});
                    all.push_back({.truth = {.tonic = tonic, .isMinor = minor}, .hasDrums = drums > 0.0});
                }
            }
        }
    }
    inParallel(all.size(), processorCount(),
               [&](std::size_t index) { all[index].heard = DJ::key(playChords(harmonies[index]), rate); });
    return all;
}

double scoreOf(const DJ::Key& heard, const DJ::Key& truth)
{
    if (heard == truth)
        return 1.0;
    if (heard == truth.shifted(7) || heard == truth.shifted(-7))
        return 0.5;
    if (heard.isMinor != truth.isMinor && heard.camelotNumber() == truth.camelotNumber())
        return 0.3;
    return heard.tonic == truth.tonic ? 0.2 : 0.0;
}

double errorOf(double heard, double truth)
{
    return std::abs(heard / truth - 1.0);
}

double errorWithoutOctave(double heard, double truth)
{
    return std::min({errorOf(heard, truth), errorOf(2.0 * heard, truth), errorOf(0.5 * heard, truth)});
}

} // namespace orvane::test
