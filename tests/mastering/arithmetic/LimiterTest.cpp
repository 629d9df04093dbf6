#include "mastering/arithmetic/Limiter.h"

#include "mastering/arithmetic/SlidingMaximum.h"
#include "tests/mastering/arithmetic/Reference.h"
#include "tests/mastering/arithmetic/Signals.h"

#include <cmath>
#include <gmock/gmock.h>

using namespace orvane;
using namespace orvane::test;

namespace {

constexpr double rate = 44100.0;
constexpr std::size_t lookAhead = 220;
constexpr std::size_t release = 2205;

double linear(double decibels)
{
    return std::pow(10.0, decibels / 20.0);
}

/// A quiet even signal with one sample of `height` at `place`, limited: its gain at each frame.
Samples gainsAround(double height, std::size_t place, std::size_t frames, double ceiling)
{
    Channels channels{Samples(frames, 0.01), Samples(frames, -0.01)};
    channels[0][place] = height;
    Master::limit(channels, ceiling, rate);
    Samples gains;
    for (const double sample : channels[1])
        gains.push_back(sample / -0.01);
    return gains;
}

void expectLimitedAsThePlainDefinitionSays(Channels channels, double ceiling, double hertz)
{
    Channels wanted = channels;
    Master::limit(channels, ceiling, hertz);
    Reference::limit(wanted, ceiling, hertz);
    for (std::size_t channel = 0; channel < wanted.size(); ++channel) {
        for (std::size_t frame = 0; frame < wanted[channel].size(); ++frame)
            ASSERT_NEAR(channels[channel][frame], wanted[channel][frame], 1e-12) << frame << " in channel " << channel;
    }
}

/// For each index the largest of the `length` values from there on, as far as there are any.
Samples slidingMaximum(const Samples& values, std::size_t length)
{
    Master::SlidingMaximum window(length);
    Samples largest;
    std::size_t added = 0;
    for (std::size_t index = 0; index < values.size(); ++index) {
        window.advanceTo(index);
        for (; added < std::min(index + length, values.size()); ++added)
            window.add(added, values[added]);
        largest.push_back(window.largest());
        EXPECT_EQ(values[window.largestIndex()], window.largest());
    }
    return largest;
}

} // namespace

TEST(SlidingMaximum, everyLengthIsAsABruteSearchSays)
{
    for (const std::size_t window : {1u, 2u, 3u, 7u, 20u}) {
        for (std::size_t frames = 0; frames <= 3 * window; ++frames) {
            Samples values = noise(frames, 1.0, unsigned(frames));
            for (double& value : values)
                value = std::round(std::abs(value) * 3.0);
            EXPECT_EQ(slidingMaximum(values, window), Reference::slidingMaximum(values, window));
        }
    }
}

TEST(SlidingMaximum, everyLengthUpToThreeLookAheadsIsAsABruteSearchSays)
{
    for (std::size_t frames = 0; frames <= 3 * lookAhead; ++frames) {
        Samples values = noise(frames, 1.0, unsigned(frames));
        for (double& value : values)
            value = std::abs(value);
        ASSERT_EQ(slidingMaximum(values, lookAhead), Reference::slidingMaximum(values, lookAhead)) << frames;
    }
}

TEST(SlidingMaximum, risingAndFallingValuesFillAndEmptyIt)
{
    Samples rising;
    for (int value = 0; value < 100; ++value)
        rising.push_back(value);
    const Samples falling(rising.rbegin(), rising.rend());
    EXPECT_EQ(slidingMaximum(rising, 10), Reference::slidingMaximum(rising, 10));
    EXPECT_EQ(slidingMaximum(falling, 10), Reference::slidingMaximum(falling, 10));
    EXPECT_EQ(slidingMaximum(Samples(100, 1.0), 10), Samples(100, 1.0));
}

TEST(SlidingMaximum, holdsNothingBeforeTheFirstValueAndBehindTheLast)
{
    Master::SlidingMaximum window(3);
    EXPECT_TRUE(window.isEmpty());
    window.add(5, -2.0);
    window.advanceTo(5);
    ASSERT_FALSE(window.isEmpty());
    EXPECT_EQ(window.largest(), -2.0);
    EXPECT_EQ(window.largestIndex(), 5u);
    window.advanceTo(6);
    EXPECT_TRUE(window.isEmpty());
}

TEST(Limiter, everySignalComesOutAsThePlainDefinitionSays)
{
    for (const double hertz : {100.0, 8000.0, 11025.0, 44100.0}) {
        for (const std::size_t frames : {1u, 3u, 219u, 220u, 221u, 4095u, 4096u, 4097u, 20000u}) {
            Channels found{noise(frames, 0.4, unsigned(frames)), noise(frames, 0.2, unsigned(frames) + 1)};
            Channels wanted = found;
            Master::limit(found, -6.0, hertz);
            Reference::limit(wanted, -6.0, hertz);
            for (std::size_t frame = 0; frame < frames; ++frame) {
                ASSERT_NEAR(found[0][frame], wanted[0][frame], 1e-12) << frame << " of " << frames << " at " << hertz;
                ASSERT_NEAR(found[1][frame], wanted[1][frame], 1e-12) << frame << " of " << frames << " at " << hertz;
            }
        }
    }
}

TEST(Limiter, anOvershootThatFallsForLongerThanTheLookAheadComesOutAsThePlainDefinitionSays)
{
    for (const std::size_t length : {lookAhead - 1, lookAhead, lookAhead + 1, 2 * lookAhead, 10 * lookAhead}) {
        Channels found{silence(5000)};
        for (std::size_t frame = 0; frame < length; ++frame)
            found[0][1000 + frame] = 1.0 - 0.4 * double(frame) / double(length);
        Channels wanted = found;
        Master::limit(found, -6.0, rate);
        Reference::limit(wanted, -6.0, rate);
        for (std::size_t frame = 0; frame < 5000; ++frame)
            ASSERT_NEAR(found[0][frame], wanted[0][frame], 1e-12) << frame << " with a fall of " << length;
    }
}

TEST(Limiter, loneOvershootsComeOutAsThePlainDefinitionSaysWhereverTheyLie)
{
    for (const std::size_t place : {0u, 1u, 219u, 220u, 4095u, 4096u, 4097u, 8192u, 65535u, 65536u, 65537u, 69998u}) {
        for (const std::size_t distance : {1u, 2u, 219u, 220u, 221u, 1500u}) {
            Channels found{Samples(70000, 0.01), Samples(70000, -0.01)};
            found[0][place] = 0.9;
            found[1][std::min<std::size_t>(place + distance, 69999)] = -0.8;
            expectLimitedAsThePlainDefinitionSays(found, -6.0, rate);
        }
    }
}

TEST(Limiter, sparseOvershootsComeOutAsThePlainDefinitionSays)
{
    for (unsigned run = 0; run < 20; ++run) {
        Channels channels{noise(20000, 0.17, run)};
        expectLimitedAsThePlainDefinitionSays(channels, -6.0, 8000.0);
    }
}

TEST(Limiter, aCeilingNearSilenceHoldsOnlyWhatExceedsIt)
{
    Channels channels{Samples(5000, 0.9e-4)};
    channels[0][3000] = 1.1e-4;
    expectLimitedAsThePlainDefinitionSays(channels, -80.0, rate);
    const Channels under{Samples(5000, 0.9e-4)};
    Channels limited = under;
    Master::limit(limited, -80.0, rate);
    EXPECT_EQ(limited, under);
}

TEST(Limiter, whatAChannelHasBehindTheEndOfTheFirstStaysAsItIs)
{
    for (const std::size_t frames : {1u, 100u, 4096u, 65536u, 70000u}) {
        Channels channels{Samples(frames, 0.9), Samples(frames, 0.9)};
        channels[1].resize(frames + 10, 5.0);
        const Channels before = channels;
        Master::limit(channels, -6.0, rate);
        EXPECT_EQ(channels[0], Samples(channels[1].begin(), channels[1].end() - 10)) << frames;
        EXPECT_EQ(Samples(channels[1].end() - 10, channels[1].end()), Samples(10, 5.0)) << frames;
        const Channels limited{channels[0], channels[0]};
        EXPECT_EQ(Master::peaksLimited(before, -6.0, rate), Master::peaksOf(limited)) << frames;
    }
}

TEST(Limiter, aLongSignalComesOutAsThePlainDefinitionSays)
{
    Channels found = music(5.0, rate);
    found[0] = louder(found[0], 9.0);
    Channels wanted = found;
    Master::limit(found, -3.0, rate);
    Reference::limit(wanted, -3.0, rate);
    for (std::size_t channel = 0; channel < 2; ++channel) {
        for (std::size_t frame = 0; frame < wanted[channel].size(); ++frame)
            ASSERT_NEAR(found[channel][frame], wanted[channel][frame], 1e-12) << frame;
    }
}

TEST(Limiter, tellsThePeaksOfWhatItWouldMakeOfASignal)
{
    for (const std::size_t frames : {0u, 1u, 40u, 4096u, 65535u, 65536u, 65537u, 200000u, 1500000u}) {
        const Channels input{noise(frames, 0.4, unsigned(frames)), noise(frames, 0.2, unsigned(frames) + 1)};
        Channels limited = input;
        Master::limit(limited, -6.0, rate);
        EXPECT_EQ(Master::peaksLimited(input, -6.0, rate), Master::peaksOf(limited)) << frames;
    }
    EXPECT_EQ(Master::peaksLimited({}, -6.0, rate), Master::Peaks());
}

TEST(LimiterLaw, noSampleEverExceedsTheCeiling)
{
    for (const double ceiling : {-0.1, -1.0, -6.0, -20.0}) {
        Channels channels = music(3.0, rate);
        channels[0] = louder(channels[0], 20.0);
        Master::limit(channels, ceiling, rate);
        for (const auto& channel : channels) {
            for (const double sample : channel)
                ASSERT_LE(std::abs(sample), linear(ceiling));
        }
    }
}

TEST(Limiter, whatLiesUnderTheCeilingStaysAsItIs)
{
    Channels channels{noise(10000, 0.1), noise(10000, 0.1, 1)};
    for (auto& channel : channels) {
        for (double& sample : channel)
            sample = std::clamp(sample, -0.5, 0.5);
    }
    channels[0][77] = linear(-6.0);
    channels[1][5000] = -linear(-6.0);
    const Channels before = channels;
    Master::limit(channels, -6.0, rate);
    EXPECT_EQ(channels, before);
}

TEST(Limiter, aClickPullsTheGainDownOneLookAheadBeforeIt)
{
    const std::size_t click = 5000;
    const Samples gains = gainsAround(1.0, click, 20000, -12.0);
    EXPECT_EQ(gains[click - lookAhead], 1.0);
    EXPECT_NEAR(gains[click - lookAhead + 1], linear(-12.0), 1e-12);
    // The release tries to rise in between and is called back each time.
    for (std::size_t frame = click - lookAhead + 1; frame <= click; ++frame) {
        EXPECT_GE(gains[frame], linear(-12.0) - 1e-12);
        EXPECT_LE(gains[frame], linear(-12.0) * std::exp2(1.0 / double(release)) + 1e-12);
    }
}

TEST(Limiter, theGainRecoversSixDecibelsInFiftyMilliseconds)
{
    const std::size_t click = 5000;
    const Samples gains = gainsAround(1.0, click, 20000, -12.0);
    for (const std::size_t frame : {click + 1, click + 500, click + 1500})
        EXPECT_NEAR(gains[frame + release] / gains[frame], 2.0, 1e-9);
    // From -12 dB it takes two doublings less a little.
    EXPECT_LT(gains[click + 4300], 1.0);
    EXPECT_EQ(gains[click + 4500], 1.0);
    EXPECT_EQ(gains.back(), 1.0);
}

TEST(Limiter, allChannelsShareOneGain)
{
    Channels channels{noise(20000, 0.5), noise(20000, 0.1, 1)};
    const Channels before = channels;
    Master::limit(channels, -10.0, rate);
    for (std::size_t frame = 0; frame < 20000; ++frame) {
        const bool isClamped =
            std::abs(channels[0][frame]) >= linear(-10.0) || std::abs(channels[1][frame]) >= linear(-10.0);
        if (isClamped || std::abs(before[0][frame]) < 0.01)
            continue;
        ASSERT_NEAR(channels[1][frame] / before[1][frame], channels[0][frame] / before[0][frame], 1e-9);
    }
}

TEST(Limiter, anEmptySignalIsLeftAlone)
{
    Channels none;
    Channels empty{{}, {}};
    Master::limit(none, -1.0, rate);
    Master::limit(empty, -1.0, rate);
    EXPECT_TRUE(none.empty());
    EXPECT_EQ(empty, (Channels{{}, {}}));
}
