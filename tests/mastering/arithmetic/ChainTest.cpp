#include "mastering/arithmetic/Chain.h"

#include "mastering/arithmetic/Limiter.h"
#include "mastering/arithmetic/Loudness.h"
#include "mastering/arithmetic/TruePeak.h"
#include "tests/mastering/arithmetic/Reference.h"
#include "tests/mastering/arithmetic/Signals.h"

#include <cmath>
#include <gmock/gmock.h>
#include <random>

using namespace orvane;
using namespace orvane::test;
using Master::apply;
using Master::Result;

namespace {

constexpr double rate = 44100.0;

double linear(double decibels)
{
    return std::pow(10.0, decibels / 20.0);
}

/// The chain as its definition tells it, with the program's own measuring and limiting.
struct Plain
{
    Channels channels;
    int tries = 0;
    double lastCeiling = 0.0;
};

Plain plainChain(Channels channels, double target, double ceiling, double hertz)
{
    const double gain = linear(target - Master::measure(channels, hertz).integrated);
    for (auto& channel : channels) {
        for (double& sample : channel)
            sample *= gain;
    }
    Plain plain{.channels = channels, .tries = 0, .lastCeiling = ceiling};
    if (!(Master::peakDB(channels, hertz) > ceiling))
        return plain;
    double c = ceiling;
    for (int t = 0; t <= 3; ++t) {
        plain.channels = channels;
        plain.lastCeiling = c;
        ++plain.tries;
        Master::limit(plain.channels, c, hertz);
        const double m = Master::peakDB(plain.channels, hertz);
        if (m <= ceiling + 0.01)
            break;
        c -= std::max(m - ceiling, 0.02);
    }
    return plain;
}

/// White noise that peaks 1 dB above full scale; always the same for one number.
Channels loudNoise(unsigned number)
{
    std::mt19937 generator(number);
    std::normal_distribution<double> distribution;
    Channels channels{Samples(26500)};
    for (double& sample : channels[0])
        sample = distribution(generator);
    Master::amplify(channels, linear(1.0) / Master::largestMagnitude(channels));
    return channels;
}

/// Noise whose limited form peaks between other samples in each try, so that even the fourth ends above the ceiling.
/// About one in a hundred does.
Channels stubborn()
{
    for (unsigned number = 0; number < 1000; ++number) {
        const Channels channels = loudNoise(number);
        const Plain plain = plainChain(channels, Master::measure(channels, rate).integrated, -1.0, rate);
        if (plain.tries == 4 && Master::peakDB(plain.channels, rate) > -0.99)
            return channels;
    }
    return {};
}

} // namespace

TEST(Chain, bringsASignalToItsTarget)
{
    Channels channels = music(8.0, rate);
    const Result result = apply(-23.0, -1.0, channels, rate);
    EXPECT_FALSE(result.limited);
    EXPECT_NEAR(result.after.integrated, -23.0, 1e-9);
    EXPECT_NEAR(result.gainApplied, -23.0 - result.before.integrated, 1e-9);
    EXPECT_EQ(result.after, Master::measure(channels, rate));
}

TEST(Chain, withoutLimitingTheOutputIsExactlyTheInputTimesTheGain)
{
    const Channels input = music(5.0, rate);
    Channels output = input;
    const Result result = apply(-30.0, -1.0, output, rate);
    ASSERT_FALSE(result.limited);
    const double gain = linear(-30.0 - result.before.integrated);
    for (std::size_t channel = 0; channel < 2; ++channel) {
        for (std::size_t frame = 0; frame < input[channel].size(); ++frame)
            ASSERT_EQ(output[channel][frame], input[channel][frame] * gain);
    }
}

TEST(Chain, whatCannotBeMeasuredIsLeftAlone)
{
    const std::vector<Channels> signals{{silence(100000)}, {tone(1000, -6, 0.3, rate)}, {noise(5, 0.1)}, {{}}, {}};
    for (const Channels& signal : signals) {
        Channels channels = signal;
        const Result result = apply(-5.0, -1.0, channels, rate);
        EXPECT_EQ(channels, signal);
        EXPECT_EQ(result.gainApplied, 0.0);
        EXPECT_FALSE(result.limited);
        EXPECT_EQ(result.before, result.after);
        EXPECT_EQ(result.before, Master::measure(signal, rate));
    }
}

TEST(Chain, aQuietTrackWithHighPeaksIsLimitedAndEndsSlightlyBelowItsTarget)
{
    // -20 LUFS with peaks at -6 dBTP: 6 dB more lifts the peaks to 0.
    Channels channels{tone(997.0, -20.0 + 0.7, 10.0, rate)};
    channels[0] = louder(channels[0], 3.01 - 0.7);
    for (std::size_t frame = 1000; frame < channels[0].size(); frame += 22050)
        channels[0][frame] = linear(-6.0);
    const double before = Master::measure(channels, rate).integrated;
    const Result result = apply(before + 6.0, -1.0, channels, rate);
    EXPECT_TRUE(result.limited);
    EXPECT_NEAR(result.gainApplied, 6.0, 1e-9);
    EXPECT_LT(result.after.integrated, before + 6.0);
    EXPECT_GT(result.after.integrated, before + 5.0);
    EXPECT_LE(result.after.truePeak, -1.0 + 0.01);
}

TEST(Chain, aTrackLouderThanItsTargetIsTurnedDownAndLimitedOnlyIfItsPeakStillExceedsTheCeiling)
{
    Channels channels{tone(997.0, -1.0, 5.0, rate)};
    const Result turnedDown = apply(-20.0, -1.0, channels, rate);
    EXPECT_LT(turnedDown.gainApplied, -10.0);
    EXPECT_FALSE(turnedDown.limited);
    Channels peaky{tone(997.0, -30.0, 5.0, rate)};
    peaky[0][100000] = 4.0;
    const Result stillOver = apply(Master::measure(peaky, rate).integrated - 3.0, -1.0, peaky, rate);
    EXPECT_NEAR(stillOver.gainApplied, -3.0, 1e-9);
    EXPECT_TRUE(stillOver.limited);
}

TEST(Chain, aPeakExactlyAtTheCeilingIsNotLimited)
{
    Channels channels = music(3.0, rate);
    const double loudness = Master::measure(channels, rate).integrated;
    const double gain = linear(0.0);
    Channels gained = channels;
    Master::amplify(gained, gain);
    const double peak = Master::peakDB(gained, rate);
    Channels same = channels;
    EXPECT_FALSE(apply(loudness, peak, same, rate).limited);
    EXPECT_TRUE(apply(loudness, peak - 0.001, channels, rate).limited);
}

TEST(Chain, comesOutAsItsDefinitionTells)
{
    for (const double target : {-23.0, -14.0, -9.0, -5.0}) {
        const Channels input = music(4.0, rate);
        Channels output = input;
        apply(target, -1.0, output, rate);
        EXPECT_EQ(output, plainChain(input, target, -1.0, rate).channels) << target;
    }
}

TEST(Chain, everyNoiseComesOutAsItsDefinitionTells)
{
    for (unsigned number = 0; number < 150; ++number) {
        Channels input = loudNoise(number);
        input[0].resize(5000);
        Master::amplify(input, linear(-0.03 * number));
        const double loudness = Master::measure(input, 8000.0).integrated;
        Channels output = input;
        const Result result = apply(loudness, -1.0, output, 8000.0);
        ASSERT_EQ(output, plainChain(input, loudness, -1.0, 8000.0).channels) << number;
        ASSERT_EQ(result.after, Master::measure(output, 8000.0)) << number;
    }
}

TEST(Chain, triesFourTimesAndKeepsWhatTheLastTryGives)
{
    const Channels input = stubborn();
    ASSERT_FALSE(input.empty());
    const double loudness = Master::measure(input, rate).integrated;
    Channels output = input;
    const Result result = apply(loudness, -1.0, output, rate);
    EXPECT_TRUE(result.limited);
    EXPECT_GT(result.after.truePeak, -0.99);
    EXPECT_EQ(output, plainChain(input, loudness, -1.0, rate).channels);
}

TEST(Chain, aHundredthOfADecibelAboveTheCeilingIsTolerated)
{
    // Peaks a quarter of a sample beside the samples, and 0.0103 dB above them.
    const Channels input{tone(rate / 32.0, -3.0, 2.0, rate, -360.0 / 128.0)};
    const double loudness = Master::measure(input, rate).integrated;
    const double peak = Master::peakDB(input, rate);
    ASSERT_NEAR(peak - Master::samplePeakDB(input), 0.0103, 0.0001);
    Channels tolerated = input;
    EXPECT_TRUE(apply(loudness, peak - 0.0099, tolerated, rate).limited);
    EXPECT_EQ(tolerated, input);
    Channels tooHigh = input;
    EXPECT_TRUE(apply(loudness, peak - 0.01005, tooHigh, rate).limited);
    EXPECT_NE(tooHigh, input);
}

TEST(Chain, aTruePeakExactlyAtTheEndOfTheToleranceIsTolerated)
{
    const Channels input{tone(rate / 32.0, -3.0, 2.0, rate, -360.0 / 128.0)};
    const double loudness = Master::measure(input, rate).integrated;
    const double peak = Master::peakDB(input, rate);
    double ceiling = peak - 0.01;
    while (ceiling + 0.01 < peak)
        ceiling = std::nextafter(ceiling, 0.0);
    while (ceiling + 0.01 > peak)
        ceiling = std::nextafter(ceiling, -10.0);
    ASSERT_EQ(ceiling + 0.01, peak);
    Channels output = input;
    EXPECT_TRUE(apply(loudness, ceiling, output, rate).limited);
    EXPECT_EQ(output, input);
}

TEST(ChainLaw, theSamplePeakNeverExceedsTheLastWorkingCeiling)
{
    for (const double target : {-12.0, -8.0, -4.0}) {
        const Channels input = music(4.0, rate);
        Channels output = input;
        const Result result = apply(target, -1.0, output, rate);
        ASSERT_TRUE(result.limited);
        EXPECT_LE(result.after.samplePeak, plainChain(input, target, -1.0, rate).lastCeiling + 1e-9);
        EXPECT_LE(result.after.samplePeak, -1.0 + 1e-9);
    }
}

TEST(ChainLaw, masteringAMasterAgainMovesNothing)
{
    for (const double target : {-30.0, -23.0, -20.0}) {
        Channels channels = music(6.0, rate);
        ASSERT_FALSE(apply(target, -1.0, channels, rate).limited);
        EXPECT_LE(std::abs(apply(target, -1.0, channels, rate).gainApplied), 0.01);
    }
}

TEST(ChainLaw, swappedAndInvertedChannelsComeOutSwappedAndInverted)
{
    for (const double target : {-23.0, -8.0}) {
        Channels straight = music(4.0, rate);
        Channels turned{straight[1], straight[0]};
        for (double& sample : turned[0])
            sample = -sample;
        const Result result = apply(target, -1.0, straight, rate);
        EXPECT_EQ(result.limited, target > -20.0);
        EXPECT_EQ(apply(target, -1.0, turned, rate), result);
        EXPECT_EQ(turned[1], straight[0]);
        for (double& sample : turned[0])
            sample = -sample;
        EXPECT_EQ(turned[0], straight[1]);
    }
}
