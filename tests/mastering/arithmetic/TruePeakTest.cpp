#include "mastering/arithmetic/TruePeak.h"

#include "mastering/arithmetic/Reading.h"
#include "tests/mastering/arithmetic/Reference.h"
#include "tests/mastering/arithmetic/Signals.h"

#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>

using namespace orvane;
using namespace orvane::test;

namespace {

constexpr double relative = 1e-9;

void expectSamePeak(const Samples& samples)
{
    const double wanted = Reference::truePeak(samples);
    // The sinc is not quite 0 at its zeros in the plain form.
    const double dust = 1e-15 * Master::largestMagnitude(std::span(samples));
    EXPECT_NEAR(Master::scanTruePeak(samples), wanted, relative * wanted + dust) << samples.size() << " frames";
}

/// Silence with one burst of noise around `place`, as far as it reaches.
Samples burstAt(std::size_t frames, std::size_t place)
{
    Samples samples = silence(frames);
    const Samples burst = noise(9, 0.5, unsigned(place));
    for (std::size_t index = 0; index < burst.size() && place + index < frames; ++index)
        samples[place + index] = burst[index];
    return samples;
}

} // namespace

TEST(Oversampling, theTapsAddUpToFourAndAreSymmetric)
{
    const auto& taps = Master::oversamplingTaps();
    double sum = 0.0;
    for (std::size_t index = 0; index < taps.size(); ++index) {
        sum += taps[index];
        EXPECT_NEAR(taps[index], taps[taps.size() - 1 - index], 1e-15);
    }
    EXPECT_NEAR(sum, 4.0, 1e-12);
}

TEST(Oversampling, everyLengthComesOutAsThePlainDefinitionSays)
{
    for (std::size_t frames = 33; frames < 140; ++frames) {
        const Samples samples = noise(frames, 0.3, unsigned(frames));
        const Samples wanted = Reference::oversampled(samples);
        const Samples found = Master::oversample4x(samples);
        ASSERT_EQ(found.size(), wanted.size());
        for (std::size_t index = 0; index < found.size(); ++index)
            ASSERT_NEAR(found[index], wanted[index], 1e-12) << index << " of " << frames;
    }
}

TEST(Oversampling, tooFewSamplesGiveSilence)
{
    EXPECT_EQ(Master::oversample4x(noise(32, 0.3)), silence(128));
    EXPECT_TRUE(Master::oversample4x({}).empty());
}

TEST(TruePeak, everyShortLengthReadsAsThePlainDefinitionSays)
{
    for (std::size_t frames = 33; frames < 300; ++frames)
        expectSamePeak(noise(frames, 0.3, unsigned(frames)));
}

TEST(TruePeak, chunkBordersHideNothing)
{
    for (const std::size_t frames : {65535u, 65536u, 65537u, 65568u, 65600u, 65601u, 131072u, 131105u, 140000u})
        expectSamePeak(noise(frames, 0.3, unsigned(frames)));
}

TEST(TruePeak, aBurstIsFoundWhereverItLies)
{
    for (std::size_t place = 0; place < 200; ++place)
        expectSamePeak(burstAt(200, place));
    for (std::size_t place = 65536 - 70; place < 65536 + 70; place += 19)
        expectSamePeak(burstAt(66000, place));
}

TEST(TruePeak, aLoneLoudBlockAmongQuietOnesIsNotPassedOver)
{
    for (std::size_t place = 1000; place < 1100; ++place) {
        Samples samples = noise(5000, 0.1, 3);
        // A pair of opposite samples peaks beside itself; a pair of equal ones peaks in between.
        samples[place] = samples[place + 1] = 0.9;
        expectSamePeak(samples);
    }
}

TEST(TruePeak, theWorstIsNotPassedOverForALoneSampleThatIsAsGoodAsEqual)
{
    const auto& taps = Master::oversamplingTaps();
    Samples samples = silence(400);
    for (std::size_t tap = 0; tap < 32; ++tap)
        samples[200 + tap] = std::copysign(1.0, taps[126 - 4 * tap]);
    const double worst = Master::scanTruePeak(samples);
    samples[40] = worst / taps[64] * (1.0 - 1e-12);
    EXPECT_EQ(Master::scanTruePeak(samples), worst);
}

TEST(TruePeak, theWorstThatSmallSamplesCanDoIsNotPassedOver)
{
    const auto& taps = Master::oversamplingTaps();
    for (const std::size_t phase : {1u, 2u, 3u}) {
        Samples samples = silence(400);
        // Samples with the signs of the taps add up to the most there can be, a little more than the lone large one.
        double sum = 0.0;
        for (std::size_t tap = 0; tap < 32; ++tap)
            sum += std::abs(taps[124 + phase - 4 * tap]);
        for (std::size_t tap = 0; tap < 32; ++tap)
            samples[100 + tap] = std::copysign(1.0, taps[124 + phase - 4 * tap]);
        samples[300] = 0.99 * sum;
        expectSamePeak(samples);
        EXPECT_GT(Master::scanTruePeak(samples), samples[300]);
    }
}

TEST(TruePeak, whatLiesBehindTheSamplesIsNotLookedAt)
{
    for (std::size_t frames = 33; frames < 200; ++frames) {
        Samples samples = noise(frames, 0.3, unsigned(frames));
        const double alone = Master::scanTruePeak(samples);
        samples.insert(samples.end(), 40, 1000.0);
        EXPECT_EQ(Master::scanTruePeak(std::span(samples).first(frames)), alone) << frames;
        EXPECT_LT(Master::scanPeaks(std::span(samples).first(frames)).sample, 1000.0);
    }
}

TEST(TruePeak, whatIsNotRememberedMayBeGone)
{
    constexpr std::size_t remembered = Master::PeakScan::remembered;
    for (std::size_t frames = 400; frames < 470; ++frames) {
        Samples samples = noise(frames, 0.3, unsigned(frames));
        const Master::ChannelPeaks wanted = Master::scanPeaks(samples);
        Master::PeakScan scan;
        for (std::size_t end = 2 * remembered; end <= frames; end += 37) {
            scan.advance(std::span(samples).first(end));
            std::fill(samples.begin() + remembered, samples.begin() + std::ptrdiff_t(end - remembered), 1000.0);
        }
        const Master::ChannelPeaks found = scan.finish(samples);
        EXPECT_EQ(found.sample, wanted.sample) << frames;
        EXPECT_EQ(found.oversampled, wanted.oversampled) << frames;
    }
}

TEST(TruePeak, musicReadsAsThePlainDefinitionSays)
{
    for (const Samples& channel : music(4.0, 44100.0))
        expectSamePeak(channel);
}

TEST(TruePeak, bothPeaksComeFromOnePass)
{
    for (std::size_t frames = 0; frames < 200; ++frames) {
        const Samples samples = noise(frames, 0.3, unsigned(frames));
        EXPECT_EQ(Master::scanPeaks(samples).sample, Master::largestMagnitude(samples)) << frames;
        EXPECT_EQ(Master::scanPeaks(samples).oversampled, Master::scanTruePeak(samples)) << frames;
    }
    const Channels channels{noise(5000, 0.1), noise(5000, 0.3, 1)};
    const Master::Peaks peaks = Master::peaksOf(channels);
    EXPECT_EQ(peaks, (Master::Peaks{Master::peakDB(channels, 44100.0), Master::samplePeakDB(channels)}));
}

TEST(TruePeak, aLoneSampleIsSeenAtEveryPlace)
{
    for (const std::size_t frames : {33u, 40u, 48u, 63u, 64u, 65u, 80u, 96u, 97u, 128u, 150u}) {
        for (std::size_t place = 0; place < frames; ++place) {
            Samples samples = silence(frames);
            samples[place] = -0.5;
            expectSamePeak(samples);
            EXPECT_EQ(Master::scanPeaks(samples).sample, 0.5);
        }
    }
}

TEST(TruePeak, underThirtyThreeFramesTheSamplePeakStands)
{
    EXPECT_EQ(Master::scanTruePeak({}), 0.0);
    for (std::size_t frames = 1; frames <= 32; ++frames) {
        Samples samples = silence(frames);
        samples[frames / 2] = -0.5;
        EXPECT_EQ(Master::scanTruePeak(samples), 0.5);
        EXPECT_EQ(Master::peakDB({samples}, 44100.0), 20.0 * std::log10(0.5));
    }
}

TEST(TruePeak, theFirstAndLastSixteenSamplesAreOnlySeenAsSamples)
{
    for (const std::size_t place : {0u, 15u, 184u, 199u}) {
        Samples samples = silence(200);
        samples[place] = 0.5;
        EXPECT_LT(Master::scanTruePeak(samples), 0.5);
        EXPECT_EQ(Master::peakDB({samples}, 44100.0), 20.0 * std::log10(0.5));
    }
    for (const std::size_t place : {16u, 183u}) {
        Samples samples = silence(200);
        samples[place] = 0.5;
        EXPECT_NEAR(Master::scanTruePeak(samples), 0.5, 0.001);
    }
}

TEST(TruePeak, aPeakBetweenSamplesLiesAboveFullScaleAndTheSamplePeakBelow)
{
    const Channels channels{tone(11025.0, 0.0, 1.0, 44100.0, 45.0)};
    EXPECT_NEAR(Master::samplePeakDB(channels), -3.01, 0.01);
    const Channels loud{louder(channels[0], 3.0)};
    EXPECT_LE(Master::samplePeakDB(loud), 0.0);
    EXPECT_GT(Master::peakDB(loud, 44100.0), 2.5);
}

TEST(TruePeak, isTheHighestOfAllChannelsAndNeverBelowTheSamples)
{
    const Channels channels{noise(5000, 0.1), noise(5000, 0.3, 1), noise(5000, 0.2, 2)};
    double largest = 0.0;
    for (const auto& channel : channels)
        largest = std::max({largest, Reference::truePeak(channel), Master::largestMagnitude(std::span(channel))});
    EXPECT_NEAR(Master::peakDB(channels, 44100.0), 20.0 * std::log10(largest), 1e-8);
    EXPECT_GE(Master::peakDB(channels, 44100.0), Master::samplePeakDB(channels));
}

TEST(TruePeak, aSignalNearSilenceReadsAsThePlainDefinitionSays)
{
    for (std::size_t frames = 33; frames < 140; ++frames)
        expectSamePeak(noise(frames, 1e-8, unsigned(frames)));
    expectSamePeak(noise(5000, 1e-8));
}

TEST(TruePeak, silenceOfEveryLengthHasNoPeak)
{
    for (std::size_t frames = 0; frames < 140; ++frames) {
        EXPECT_EQ(Master::scanPeaks(silence(frames)).sample, 0.0) << frames;
        EXPECT_EQ(Master::scanPeaks(silence(frames)).oversampled, 0.0) << frames;
    }
}

TEST(TruePeak, noSignalHasNoPeak)
{
    EXPECT_EQ(Master::peakDB({}, 44100.0), Master::minusInfinity);
    EXPECT_EQ(Master::peakDB({{}}, 44100.0), Master::minusInfinity);
    EXPECT_EQ(Master::peakDB({silence(1000)}, 44100.0), Master::minusInfinity);
    EXPECT_EQ(Master::samplePeakDB({silence(1000)}), Master::minusInfinity);
}
