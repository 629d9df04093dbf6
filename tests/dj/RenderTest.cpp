#include "mastering/Master.h"
#include "tests/dj/MixFiles.h"
#include "tests/mastering/arithmetic/Reference.h"
#include "tests/mastering/arithmetic/Signals.h"

#include <cmath>

using namespace orvane;
using namespace orvane::test;
using namespace Qt::Literals::StringLiterals;
using DJ::MixSettings;

namespace {

constexpr double rate = 44100.0;

/// Four tracks that differ in everything a render goes by.
struct Rendering : MixFiles
{
    DJ::Set set{
        track({u"one"_s, 121.0, {.tonic = 0}, 0.31, 1, 0.2}, music(17.0, rate)),
        track({u"two"_s, 117.0, {.tonic = 9}, 0.05, 3, 1.9}, music(14.0, 48000.0), 48000.0),
        track({u"three"_s, 62.0, {.tonic = 2, .isMinor = true}, 0.4, 0, 0.0}, music(15.0, rate, 1)),
        track({u"four"_s, 141.0, {.tonic = 5}, 0.2, 2, 0.1}, music(12.0, 22050.0, 6), 22050.0),
    };
};

} // namespace

TEST_F(Rendering, isThePlainDefinitionToTheLastBit)
{
    expectPlain(set, {});
    expectPlain(set, {.crossfade = 4.0, .filterSweep = false, .levelMatch = false, .fadeEdges = false});
    expectPlain(set, {.crossfade = 12.0, .matchTempo = false, .levelMatch = false});
    expectPlain(set, {.crossfade = 3.3, .levelMatch = false, .beatMatch = false, .keyNudge = 2});
    expectPlain(set, {.levelTarget = -20.0, .maxStretch = 0.2, .preservePitch = false});
    expectPlain(set, {.crossfade = 24.0, .maxStretch = 0.12, .keyNudge = 2, .preservePitch = false});
    expectPlain(set, {.crossfade = 0.0, .levelTarget = -9.0, .maxStretch = 0.2, .keyNudge = 1});
}

TEST_F(Rendering, aPlainChainOfLevelsGivesTheSameMixWithinABit)
{
    const MixSettings settings{.crossfade = 2.0, .levelTarget = -9.0};
    const DJ::Set two{track({u"short"_s, 121.0}, music(5.0, rate)), track({u"shorter"_s, 117.0}, music(4.0, rate))};
    const Channels found = heard(render(two, settings));
    const PlainMix wanted = plainMix(plain(two), settings, [](double target, double ceiling, Channels& channels) {
        Reference::apply(target, ceiling, channels, rate);
    });
    ASSERT_EQ(found[0].size(), wanted.channels[0].size());
    for (std::size_t channel = 0; channel < 2; ++channel) {
        for (std::size_t frame = 0; frame < found[channel].size(); ++frame)
            ASSERT_NEAR(found[channel][frame], in24Bits(wanted.channels[channel][frame]), 1.5 / 8388608.0);
    }
}

TEST_F(Rendering, aTagIsLaidOverTheMixWhereItsPlacementSays)
{
    const QString path = folder.path(u"tag.wav"_s);
    Master::write({tone(700.0, -10.0, 1.3, rate)}, rate, {.format = Master::Format::wav}, path);
    for (const bool levelMatch : {true, false}) {
        for (const Master::Placement placement :
             {Master::Placement::everySeconds(2), Master::Placement::scattered(3)}) {
            const MixSettings settings{
                .levelMatch = levelMatch,
                .levelTarget = -17.0,
                .watermark = {.isOn = true, .file = path, .level = -6.0, .placement = placement}};
            double seconds = 0.0;
            for (const DJ::Analysis& one : set) {
                const double ratio = std::clamp(121.0 / DJ::alignOctave(one.bpm, 121.0), 0.94, 1.06);
                seconds += (one.duration - one.grid.firstBar()) / ratio;
            }
            seconds -= 8.0 * 3.0 + 2.0 * (60.0 / 121.0 * 4.0) * 4.0;
            const Channels tag = Master::prepareTag(path, rate, 2, -6.0, levelMatch ? -17.0 : -14.0);
            const auto seed = std::abs(std::int64_t(qHash(DJ::usualMixName(), 0)));
            const std::vector<std::int64_t> hits =
                Master::tagHits(placement, std::int64_t(seconds * rate), std::int64_t(tag[0].size()), rate, seed);
            ASSERT_FALSE(hits.empty());
            expectPlain(set, settings, tag, hits);
        }
    }
}
