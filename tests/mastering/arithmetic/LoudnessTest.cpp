#include "mastering/arithmetic/Loudness.h"

#include "tests/mastering/arithmetic/Reference.h"
#include "tests/mastering/arithmetic/Signals.h"

#include <cmath>
#include <ctime>
#include <gmock/gmock.h>

using namespace orvane;
using namespace orvane::test;
using Master::measure;
using Master::minusInfinity;
using Master::Reading;

namespace {

void expectNear(const Reading& found, const Reading& wanted, double tolerance)
{
    EXPECT_NEAR(found.integrated, wanted.integrated, tolerance);
    EXPECT_NEAR(found.truePeak, wanted.truePeak, tolerance);
    EXPECT_NEAR(found.range, wanted.range, tolerance);
    EXPECT_NEAR(found.samplePeak, wanted.samplePeak, tolerance);
}

/// What the process or this thread has used so far.
double processorSeconds(clockid_t clock)
{
    timespec time{};
    ::clock_gettime(clock, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

/// The short-term value or block of so many LUFS, `count` times.
Samples repeated(double value, std::size_t count)
{
    return Samples(count, value);
}

Samples joined(Samples first, const Samples& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

} // namespace

TEST(Measure, everySignalReadsAsThePlainDefinitionSays)
{
    for (const double rate : {8000.0, 11025.0, 22050.0, 44100.0, 47999.0, 48000.0, 48000.5}) {
        const Channels channels = music(4.3, rate);
        expectNear(measure(channels, rate), Reference::measure(channels, rate), 1e-9);
    }
}

TEST(Measure, everyChannelCountReadsAsThePlainDefinitionSays)
{
    for (std::size_t count = 1; count <= 8; ++count) {
        const Channels channels = music(3.6, 8000.0, count);
        expectNear(measure(channels, 8000.0), Reference::measure(channels, 8000.0), 1e-9);
    }
}

TEST(Measure, oneThreadReadsWhatAllRead)
{
    const Channels channels = music(5.0, 44100.0);
    EXPECT_EQ(measure(channels, 44100.0, Master::Threads::One), measure(channels, 44100.0, Master::Threads::All));
}

TEST(Measure, oneThreadIsTheCallersAlone)
{
    const Channels channels = music(5.0, 44100.0);
    const double before = processorSeconds(CLOCK_THREAD_CPUTIME_ID);
    const double othersBefore = processorSeconds(CLOCK_PROCESS_CPUTIME_ID) - before;
    double own = 0.0;
    // Long beside what a thread of an earlier test may still be charged with.
    while (own < 0.1) {
        measure(channels, 44100.0, Master::Threads::One);
        own = processorSeconds(CLOCK_THREAD_CPUTIME_ID) - before;
    }
    const double others = processorSeconds(CLOCK_PROCESS_CPUTIME_ID) - before - own - othersBefore;
    EXPECT_LT(others, own / 10.0);
}

TEST(Measure, nothingReadsAsNothing)
{
    const Reading nothing{
        .integrated = minusInfinity, .truePeak = minusInfinity, .range = 0, .samplePeak = minusInfinity};
    EXPECT_EQ(measure({}, 44100.0), nothing);
    EXPECT_EQ(measure({{}, {}}, 44100.0), nothing);
    EXPECT_EQ(measure({silence(200000), silence(200000)}, 44100.0), nothing);
}

TEST(Measure, underFourTenthsOfASecondOnlyThePeaksExist)
{
    const Channels channels{tone(1000.0, -6.0, 0.3, 44100.0)};
    const Reading reading = measure(channels, 44100.0);
    EXPECT_EQ(reading.integrated, minusInfinity);
    EXPECT_EQ(reading.range, 0.0);
    EXPECT_NEAR(reading.samplePeak, -6.0, 0.01);
    EXPECT_GE(reading.truePeak, reading.samplePeak);
}

TEST(Measure, fourTenthsOfASecondAreOneBlockAndOneFrameLessIsNone)
{
    Samples samples = tone(1000.0, -6.0, 0.4, 44100.0);
    ASSERT_EQ(samples.size(), 17640u);
    EXPECT_TRUE(std::isfinite(measure({samples}, 44100.0).integrated));
    samples.pop_back();
    EXPECT_EQ(measure({samples}, 44100.0).integrated, minusInfinity);
}

TEST(Measure, twoSecondsHaveALoudnessButNoRange)
{
    const Reading reading = measure(music(2.0, 44100.0), 44100.0);
    EXPECT_TRUE(std::isfinite(reading.integrated));
    EXPECT_EQ(reading.range, 0.0);
}

TEST(Measure, underTheGateThereIsNoLoudnessButThereArePeaks)
{
    const Reading reading = measure({tone(1000.0, -80.0, 5.0, 44100.0)}, 44100.0);
    EXPECT_EQ(reading.integrated, minusInfinity);
    EXPECT_EQ(reading.range, 0.0);
    EXPECT_NEAR(reading.truePeak, -80.0, 0.1);
    EXPECT_NEAR(reading.samplePeak, -80.0, 0.1);
}

TEST(Measure, aRateTooLowForABlockOrForAQuarterOfItHasNoLoudness)
{
    for (const double rate : {2.0, 5.0, 9.0})
        EXPECT_EQ(measure({noise(1000, 0.3)}, rate).integrated, minusInfinity);
}

TEST(Measure, theLfeOfSixChannelsCountsForThePeaksAlone)
{
    Channels channels = music(5.0, 8000.0, 6);
    const Reading without = measure(channels, 8000.0);
    channels[3] = louder(channels[3], 30.0);
    const Reading with = measure(channels, 8000.0);
    EXPECT_EQ(with.integrated, without.integrated);
    EXPECT_EQ(with.range, without.range);
    EXPECT_GT(with.samplePeak, without.samplePeak + 20.0);
    EXPECT_GT(with.truePeak, without.truePeak + 20.0);
}

TEST(Measure, aSecondIdenticalChannelAddsThreeDecibels)
{
    const Samples samples = music(5.0, 44100.0, 1).front();
    const double mono = measure({samples}, 44100.0).integrated;
    EXPECT_NEAR(measure({samples, samples}, 44100.0).integrated, mono + 10.0 * std::log10(2.0), 1e-9);
    EXPECT_NEAR(measure({samples, samples, samples}, 44100.0).integrated, mono + 10.0 * std::log10(3.0), 1e-9);
}

TEST(MeasureLaw, aGainMovesLoudnessAndPeaksAndLeavesTheRange)
{
    Channels channels = music(10.0, 44100.0);
    const Reading before = measure(channels, 44100.0);
    for (auto& channel : channels)
        channel = louder(channel, -5.25);
    const Reading after = measure(channels, 44100.0);
    EXPECT_NEAR(after.integrated, before.integrated - 5.25, 1e-9);
    EXPECT_NEAR(after.truePeak, before.truePeak - 5.25, 1e-9);
    EXPECT_NEAR(after.samplePeak, before.samplePeak - 5.25, 1e-9);
    EXPECT_NEAR(after.range, before.range, 1e-9);
}

TEST(MeasureLaw, swappedAndInvertedChannelsReadTheSame)
{
    const Channels channels = music(10.0, 44100.0);
    Channels turned{channels[1], channels[0]};
    for (double& sample : turned[0])
        sample = -sample;
    expectNear(measure(turned, 44100.0), measure(channels, 44100.0), 1e-12);
}

TEST(ChannelWeight, goesByTheNumberOfChannels)
{
    const std::vector<std::vector<double>> table{{1.0},
                                                 {1.0, 1.0},
                                                 {1.0, 1.0, 1.0},
                                                 {1.0, 1.0, 1.41, 1.41},
                                                 {1.0, 1.0, 1.0, 1.41, 1.41},
                                                 {1.0, 1.0, 1.0, 0.0, 1.41, 1.41},
                                                 {1.0, 1.0, 1.0, 0.0, 1.41, 1.41, 1.41},
                                                 {1.0, 1.0, 1.0, 0.0, 1.41, 1.41, 1.41, 1.41}};
    for (const auto& weights : table) {
        for (std::size_t channel = 0; channel < weights.size(); ++channel)
            EXPECT_EQ(Master::weight(channel, weights.size()), weights[channel]) << channel << " of " << weights.size();
    }
}

TEST(GatedLoudness, aBlockAtTheAbsoluteGateIsDropped)
{
    EXPECT_EQ(Master::gatedLoudness(repeated(-70.0, 3)), minusInfinity);
    EXPECT_NEAR(Master::gatedLoudness(repeated(-69.999, 3)), -69.999, 1e-9);
    EXPECT_NEAR(Master::gatedLoudness(joined(repeated(-69.0, 1), repeated(-70.0, 1))), -69.0, 1e-9);
}

TEST(GatedLoudness, blocksTenUnitsUnderTheMeanAreDropped)
{
    // One block at -20 and one at -29.5: their mean lies at -22.7, so that both stay. At -33.5 the mean is -23 and the
    // second is out.
    const double both = Master::gatedLoudness(Samples{-20.0, -29.5});
    EXPECT_NEAR(both, Reference::integrated({-20.0, -29.5}), 1e-9);
    EXPECT_LT(both, -22.0);
    EXPECT_NEAR(Master::gatedLoudness(Samples{-20.0, -33.5}), -20.0, 1e-9);
}

TEST(GatedLoudness, aBlockExactlyAtTheRelativeGateIsDropped)
{
    // From above, the second block is brought down to where the gate lies that it is part of itself.
    double second = -29.0;
    double loudness = Master::gatedLoudness(Samples{-20.0, second});
    for (int step = 0; step < 100 && loudness < -20.5; ++step) {
        second = loudness - 10.0;
        loudness = Master::gatedLoudness(Samples{-20.0, second});
    }
    EXPECT_NEAR(loudness, -20.0, 1e-9);
    EXPECT_LT(Master::gatedLoudness(Samples{-20.0, second + 1e-9}), -22.0);
}

TEST(GatedLoudness, randomBlocksReadAsThePlainDefinitionSays)
{
    for (unsigned run = 0; run < 50; ++run) {
        Samples blocks = noise(200, 20.0, run);
        for (double& block : blocks)
            block -= 40.0;
        EXPECT_NEAR(Master::gatedLoudness(blocks), Reference::integrated(blocks), 1e-9);
        EXPECT_NEAR(Master::loudnessRange(blocks), Reference::range(blocks), 1e-9);
    }
}

TEST(ShortTerm, windowsOfThreeSecondsStartEveryTenthOfASecond)
{
    const Channels channels{noise(8000 * 4 + 799, 0.3), noise(8000 * 4 + 799, 0.2, 1)};
    EXPECT_EQ(Master::shortTerm(channels, 8000.0).size(), 11u);
    const auto wanted = Reference::windowLoudness(channels, 24000, 800);
    const auto found = Master::shortTerm(channels, 8000.0);
    ASSERT_EQ(found.size(), wanted.size());
    for (std::size_t window = 0; window < found.size(); ++window)
        EXPECT_NEAR(found[window], wanted[window], 1e-9);
}

TEST(ShortTerm, theHopMayBeASingleFrame)
{
    EXPECT_EQ(Master::shortTerm({silence(31)}, 10.0).size(), 2u);
}

TEST(ShortTerm, underThreeSecondsThereIsNone)
{
    EXPECT_TRUE(Master::shortTerm({}, 8000.0).empty());
    EXPECT_TRUE(Master::shortTerm({silence(23999)}, 8000.0).empty());
    EXPECT_EQ(Master::shortTerm({silence(24000)}, 8000.0), (std::vector<double>{minusInfinity}));
    EXPECT_TRUE(Master::shortTerm({silence(24000)}, 5.0).empty());
}

TEST(LoudnessRange, aValueAtTheAbsoluteGateIsKept)
{
    EXPECT_NEAR(Master::loudnessRange(Samples{-70.0, -65.0}), 5.0, 1e-9);
    EXPECT_EQ(Master::loudnessRange(Samples{-70.001, -65.0}), 0.0);
    EXPECT_EQ(Master::loudnessRange(Samples{-80.0, minusInfinity}), 0.0);
}

TEST(LoudnessRange, oneValueHasNoRangeAndTwoHaveTheirDifference)
{
    EXPECT_EQ(Master::loudnessRange({}), 0.0);
    EXPECT_EQ(Master::loudnessRange(Samples{-20.0}), 0.0);
    EXPECT_EQ(Master::loudnessRange(Samples{-20.0, -23.5}), 3.5);
}

TEST(LoudnessRange, percentilesAreNearestRanksWithHalvesRoundedUp)
{
    // Of 11 values the 10th percentile is the second and the 95th, at 9.5, the last.
    Samples values;
    for (int value = 0; value < 11; ++value)
        values.push_back(-30.0 + value);
    EXPECT_EQ(Master::loudnessRange(values), 9.0);
    // Of 6 values the ranks 0.5 and 4.75 are the second and the last.
    EXPECT_EQ(Master::loudnessRange(Samples{-20.0, -21.0, -22.0, -23.0, -24.0, -25.0}), 4.0);
    // Of 105 the 10th, at 10.4, is the eleventh, and the 95th, at 98.8, the hundredth.
    Samples many;
    for (int value = 0; value < 105; ++value)
        many.push_back(-30.0 + 0.125 * value);
    EXPECT_EQ(Master::loudnessRange(many), 0.125 * (99 - 10));
}

TEST(LoudnessRange, aValueExactlyAtTheRelativeGateIsKept)
{
    const auto energy = [](double loudness) { return std::pow(10.0, (loudness + 0.691) / 10.0); };
    double second = -43.0;
    for (int step = 0; step < 100; ++step)
        second = Master::loudnessOfEnergy((energy(-20.0) + energy(second)) / 2.0) - 20.0;
    EXPECT_EQ(Master::loudnessRange(Samples{-20.0, second}), -20.0 - second);
    EXPECT_EQ(Master::loudnessRange(Samples{-20.0, second - 1e-9}), 0.0);
}

TEST(LoudnessRange, valuesTwentyUnitsUnderTheMeanAreKept)
{
    // Many values at -20 hold the mean there: what lies 20 units under it stays, what lies under that does not.
    const Samples loud = repeated(-20.0, 85);
    const double mean = 10.0 * std::log10(0.85 + 0.15 * 0.01) - 20.0;
    EXPECT_NEAR(Master::loudnessRange(joined(loud, repeated(mean - 20.0 + 0.01, 15))), 20.0 - 0.01 - mean - 20.0, 0.05);
    EXPECT_EQ(Master::loudnessRange(joined(loud, repeated(mean - 20.0 - 0.05, 15))), 0.0);
}
