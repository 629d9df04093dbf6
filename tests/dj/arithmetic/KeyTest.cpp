#include "dj/arithmetic/Key.h"

#include "dj/arithmetic/Energy.h"
#include "dj/arithmetic/KeyFinder.h"
#include "tests/mastering/arithmetic/Signals.h"

#include <cmath>
#include <gmock/gmock.h>
#include <numeric>

using namespace orvane;
using namespace orvane::test;
using DJ::Key;

namespace {

constexpr double rate = 44100.0;

const Key cMajor{.tonic = 0};
const Key aMajor{.tonic = 9};
const Key aMinor{.tonic = 9, .isMinor = true};

Samples sum(Samples first, const Samples& second)
{
    for (std::size_t frame = 0; frame < first.size(); ++frame)
        first[frame] += second[frame];
    return first;
}

/// The tones of a triad on the tonic, in the octave from 523 Hz.
Samples triad(const Key& key, double seconds, double atRate)
{
    Samples samples = silence(std::size_t(std::lround(seconds * atRate)));
    for (const int step : {0, key.isMinor ? 3 : 4, 7})
        samples = sum(samples, tone(440.0 * std::exp2((key.tonic + 3 + step) / 12.0), -12.0, seconds, atRate));
    return samples;
}

std::vector<Key> allKeys()
{
    std::vector<Key> keys;
    for (int tonic = 0; tonic < 12; ++tonic) {
        keys.push_back({.tonic = tonic, .isMinor = false});
        keys.push_back({.tonic = tonic, .isMinor = true});
    }
    return keys;
}

} // namespace

TEST(KeyFinder, theTonesOfATriadMakeItsKey)
{
    for (const Key& key : allKeys()) {
        DJ::Chroma chroma = {};
        for (const int step : {0, key.isMinor ? 3 : 4, 7})
            chroma[std::size_t(key.tonic + step) % 12] = 1.0;
        EXPECT_EQ(DJ::keyOf(chroma), key) << key.tonic << (key.isMinor ? " minor" : " major");
    }
}

TEST(KeyFinder, aMinorTriadIsHeardInItsKey)
{
    for (int tonic = 0; tonic < 12; ++tonic) {
        const Key key{.tonic = tonic, .isMinor = true};
        EXPECT_EQ(DJ::key(triad(key, 3.0, rate), rate), key) << tonic;
    }
}

TEST(KeyFinder, silenceAndLessThanAFrameAreCMajor)
{
    EXPECT_EQ(DJ::key(silence(100'000), rate), cMajor);
    Samples samples = triad(aMinor, 1.0, rate);
    samples.resize(4095);
    EXPECT_EQ(DJ::key(samples, rate), cMajor);
    samples = triad(aMinor, 1.0, rate);
    samples.resize(4096);
    EXPECT_EQ(DJ::key(samples, rate), aMinor);
}

TEST(KeyFinder, isCMajorWhereTheTransformCannotBeSetUp)
{
    EXPECT_EQ(DJ::keyOf(DJ::chromaOf(triad(aMinor, 1.0, rate), rate, nullptr)), cMajor);
}

TEST(KeyFinder, at96000HzTheKeysHopIs48000Samples)
{
    const double fast = 96'000.0;
    const Samples music = triad(aMinor, 4.0, fast);
    Samples heard = silence(music.size());
    Samples missed = music;
    for (std::size_t frame = 0; frame < music.size(); ++frame) {
        if (frame % 48'000 < 4096)
            std::swap(heard[frame], missed[frame]);
        if (frame % 48'000 < 4096)
            heard[frame] = music[frame];
    }
    EXPECT_EQ(DJ::key(heard, fast), DJ::key(music, fast));
    EXPECT_EQ(DJ::chromaOf(missed, fast, RealTransform::ofLength(DJ::keyWindow)), DJ::Chroma{});
}

TEST(KeyFinder, aLowRateStillTakesWholeFrames)
{
    // Half a second of 8000 Hz is less than a frame, which then follow each other.
    EXPECT_EQ(DJ::key(triad(aMinor, 3.0, 8000.0), 8000.0), aMinor);
}

TEST(KeyFinder, soundsOutside55To2000HzDoNotCount)
{
    const Samples inside = triad(aMinor, 2.0, rate);
    const DJ::Chroma low = DJ::chromaOf(tone(30.0, -6.0, 2.0, rate), rate, RealTransform::ofLength(4096));
    const DJ::Chroma wanted = DJ::chromaOf(tone(440.0, -6.0, 2.0, rate), rate, RealTransform::ofLength(4096));
    const auto total = [](const DJ::Chroma& chroma) { return std::accumulate(chroma.begin(), chroma.end(), 0.0); };
    EXPECT_LT(total(low), 0.05 * total(wanted));
    EXPECT_EQ(DJ::key(sum(inside, tone(2489.0, -6.0, 2.0, rate)), rate), aMinor);
}

TEST(KeyFinder, theLimitsThemselvesDoNotCountButWhatLiesWithinThem)
{
    // A tone in the middle of a bin sounds in the two beside it, too, and in no other.
    const auto soundOf = [](double bin, double atRate) {
        const Samples samples = tone(bin * atRate / 4096.0, -6.0, 2.0, atRate);
        const DJ::Chroma chroma = DJ::chromaOf(samples, atRate, RealTransform::ofLength(DJ::keyWindow));
        return std::accumulate(chroma.begin(), chroma.end(), 0.0);
    };
    const double whole = soundOf(100.0, 8192.0);
    EXPECT_LT(soundOf(4.0, 45'056.0), 1e-6 * whole) << "the bin above is at 55 Hz";
    EXPECT_GT(soundOf(4.0, 45'100.0), 0.1 * whole) << "the bin above is at 55.05 Hz";
    EXPECT_LT(soundOf(1001.0, 8192.0), 1e-6 * whole) << "the bin below is at 2000 Hz";
    EXPECT_GT(soundOf(1000.0, 8192.0), 0.1 * whole) << "the bin below is at 1998 Hz";
}

TEST(KeyFinder, ofEqualKeysTheLowerTonicAndTheMajorStand)
{
    DJ::Chroma even;
    even.fill(0.0);
    EXPECT_EQ(DJ::keyOf(even), cMajor);
    // Every key of one mode suits an even spread alike, and the minor profile's sum is the larger.
    even.fill(1.0);
    EXPECT_EQ(DJ::keyOf(even).isMinor, true);
    EXPECT_EQ(DJ::keyOf({1.0}), (Key{.tonic = 0, .isMinor = false}));
}

TEST(Energy, goesFrom0AtMinus30To1AtMinus6Decibels)
{
    EXPECT_EQ(DJ::energy(silence(1000)), 0.0);
    EXPECT_EQ(DJ::energy({}), 0.0);
    EXPECT_NEAR(DJ::energy(Samples(1000, std::pow(10.0, -18.0 / 20.0))), 0.5, 1e-12);
    EXPECT_NEAR(DJ::energy(Samples(1001, std::pow(10.0, -6.0 / 20.0))), 1.0, 1e-12);
    EXPECT_EQ(DJ::energy(Samples(1000, 0.9)), 1.0);
    EXPECT_EQ(DJ::energy(Samples(1000, 0.01)), 0.0);
}

TEST(Wheel, aFifthIsOneStep)
{
    for (const Key& key : allKeys()) {
        EXPECT_EQ(key.shifted(7).camelotNumber(), key.camelotNumber() % 12 + 1);
        EXPECT_EQ(key.distanceTo(key.shifted(7)), 1);
        EXPECT_EQ(key.distanceTo(key.shifted(-7)), 1);
    }
}

TEST(Wheel, aSemitoneIsSevenStepsOrFiveTheOtherWayAndTwoSemitonesAreTwo)
{
    for (const Key& key : allKeys()) {
        EXPECT_EQ(key.distanceTo(key.shifted(1)), 5);
        EXPECT_EQ(key.distanceTo(key.shifted(2)), 2);
    }
}

TEST(Wheel, relativeKeysShareANumber)
{
    for (int tonic = 0; tonic < 12; ++tonic) {
        const Key minor{.tonic = tonic, .isMinor = true};
        const Key major{.tonic = (tonic + 3) % 12};
        EXPECT_EQ(minor.camelotNumber(), major.camelotNumber());
        EXPECT_EQ(minor.distanceTo(major), 1);
    }
}

TEST(Wheel, aTonicThatIsNoneHasTheNumberOne)
{
    EXPECT_EQ((Key{.tonic = 12}.camelotNumber()), 1);
    EXPECT_EQ((Key{.tonic = -1, .isMinor = true}.camelotNumber()), 1);
}

TEST(Wheel, compatibleAreTheSameKeyItsNeighboursAndTheRelative)
{
    for (const Key& key : allKeys()) {
        int compatible = 0;
        for (const Key& other : allKeys())
            compatible += key.isCompatibleWith(other) ? 1 : 0;
        EXPECT_EQ(compatible, 4);
        EXPECT_TRUE(key.isCompatibleWith(key));
        EXPECT_TRUE(key.isCompatibleWith(key.shifted(7)));
        EXPECT_TRUE(key.isCompatibleWith(key.shifted(5)));
    }
    // A neighbour in the other mode is two away.
    EXPECT_EQ(cMajor.distanceTo({.tonic = 4, .isMinor = true}), 2);
    EXPECT_FALSE(cMajor.isCompatibleWith({.tonic = 4, .isMinor = true}));
}

TEST(Shifted, takesTheTonicIntoTheOctave)
{
    EXPECT_EQ(aMinor.shifted(5), (Key{.tonic = 2, .isMinor = true}));
    EXPECT_EQ(cMajor.shifted(-1), (Key{.tonic = 11}));
    EXPECT_EQ(cMajor.shifted(-25), (Key{.tonic = 11}));
    EXPECT_EQ(cMajor.shifted(36), cMajor);
    EXPECT_EQ(aMajor.shifted(2'147'483'647), (Key{.tonic = 4}));
}

TEST(SemitonesForRatio, roundsHalfAwayFromZero)
{
    EXPECT_EQ(DJ::semitonesForRatio(1.0), 0);
    EXPECT_EQ(DJ::semitonesForRatio(2.0), 12);
    EXPECT_EQ(DJ::semitonesForRatio(0.5), -12);
    EXPECT_EQ(DJ::semitonesForRatio(1.06), 1);
    EXPECT_EQ(DJ::semitonesForRatio(0.94), -1);
    EXPECT_EQ(DJ::semitonesForRatio(1.028), 0);
    EXPECT_EQ(DJ::semitonesForRatio(1.0293), 0);
    EXPECT_EQ(DJ::semitonesForRatio(1.0294), 1);
    EXPECT_EQ(DJ::semitonesForRatio(1.2), 3);
    EXPECT_EQ(DJ::semitonesForRatio(1.0 / 2048.0), -132);
    EXPECT_EQ(DJ::semitonesForRatio(0.0), 0);
    EXPECT_EQ(DJ::semitonesForRatio(-2.0), 0);
}

TEST(Nudge, fromCMajorToAMajorTheResultIsPlusTwo)
{
    EXPECT_EQ(cMajor.distanceTo(aMajor), 3);
    EXPECT_EQ(cMajor.shifted(1).distanceTo(aMajor), 4);
    EXPECT_EQ(cMajor.shifted(-1).distanceTo(aMajor), 2);
    EXPECT_EQ(cMajor.shifted(2).distanceTo(aMajor), 1);
    EXPECT_EQ(DJ::nudge(cMajor, aMajor, 2), 2);
}

TEST(Nudge, fromCMajorToAMinorTheResultIsZero)
{
    EXPECT_EQ(DJ::nudge(cMajor, aMinor, 2), 0);
}

TEST(Nudge, isAbsentUnderALimitOfOneEvenForTheSameKey)
{
    EXPECT_EQ(DJ::nudge(cMajor, cMajor, 0), std::nullopt);
    EXPECT_EQ(DJ::nudge(cMajor, cMajor, -1), std::nullopt);
}

TEST(Nudge, isAbsentWhereNoMoveFits)
{
    EXPECT_EQ(DJ::nudge(cMajor, aMajor, 1), std::nullopt);
}

TEST(Nudge, isTheSmallestMoveThatFitsAndOfTwoTheUpwardOne)
{
    for (const Key& key : allKeys()) {
        for (const Key& other : allKeys()) {
            std::optional<int> wanted;
            for (const int move : {0, 1, -1, 2, -2}) {
                if (!wanted && key.shifted(move).isCompatibleWith(other))
                    wanted = move;
            }
            EXPECT_EQ(DJ::nudge(key, other, 2), wanted);
        }
    }
}
