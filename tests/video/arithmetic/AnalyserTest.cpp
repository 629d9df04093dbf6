#include "video/arithmetic/Analyser.h"

#include "tests/mastering/arithmetic/Signals.h"
#include "tests/video/arithmetic/Reference.h"
#include "video/arithmetic/FrameGrid.h"

#include <algorithm>
#include <gmock/gmock.h>

using namespace orvane;
using namespace orvane::Video;

namespace {

constexpr std::size_t windowLength = 1024;

std::vector<float> floats(const test::Samples& samples)
{
    return {samples.begin(), samples.end()};
}

std::vector<float> toneOfBin(double bin, double level = 0.0)
{
    return floats(test::tone(bin * 44100.0 / windowLength, level, 1.0, 44100.0));
}

TEST(Analyser, isTheRulesWordForWordFrameByFrameOverAWholeTrack)
{
    const std::vector<float> track = floats(test::music(12.0, 44100.0).front());
    Analyser analyser(windowLength, 0.8F);
    test::ReferenceAnalyser reference(windowLength, 0.8F);
    const FrameGrid grid = frameGrid(std::int64_t(track.size()), 44100.0, 30);
    ASSERT_EQ(grid.frameCount, 360);
    double furthest = 0.0;
    for (std::int64_t frame = 0; frame < grid.frameCount + 5; ++frame) {
        const std::span<const float> slice = samplesOf(frame, grid, track, windowLength);
        const std::span<const float> ours = analyser.magnitudes(slice);
        const std::vector<double> expected = reference.magnitudes(slice);
        ASSERT_EQ(ours.size(), expected.size());
        for (std::size_t bin = 0; bin < expected.size(); ++bin)
            furthest = std::max(furthest, std::abs(double(ours[bin]) - expected[bin]));
    }
    EXPECT_LT(furthest, 1e-4);
}

TEST(Analyser, aFullScaleSineIsHeldAt1AndLiesWellAboveTheTopOfTheScale)
{
    Analyser analyser(windowLength, 0.0F);
    const std::span<const float> shown = analyser.magnitudes(toneOfBin(100.0));
    EXPECT_EQ(shown[100], 1.0F);
    // Half the window's mean of 0.42, which is -13.6 dB.
    EXPECT_NEAR(analyser.previous()[100], 0.21, 0.001);
}

TEST(Analyser, aToneAtAHundredthOfTheScaleLiesWhereItsLevelSays)
{
    Analyser analyser(windowLength, 0.0F);
    const float shown = analyser.magnitudes(toneOfBin(100.0, -60.0))[100];
    EXPECT_NEAR(shown, (-60.0 - 13.56 + 100.0) / 70.0, 0.001);
}

TEST(Analyser, theFirstFramesRiseFromSilence)
{
    Analyser analyser(windowLength, 0.8F);
    const std::vector<float> tone = toneOfBin(100.0);
    float expected = 0.0F;
    for (int frame = 0; frame < 10; ++frame) {
        analyser.magnitudes(tone);
        expected = 0.8F * expected + 0.2F * 0.21F;
        EXPECT_NEAR(analyser.previous()[100], expected, 0.001) << frame;
    }
}

TEST(Analyser, silenceIs0Everywhere)
{
    Analyser analyser(windowLength, 0.8F);
    const std::vector<float> silence(windowLength);
    EXPECT_THAT(analyser.magnitudes(silence), testing::Each(0.0F));
    EXPECT_THAT(analyser.previous(), testing::Each(0.0F));
}

TEST(Analyser, pastTheLastSampleTheSpectrumDecaysByAFactorOfFourFifthsPerFrame)
{
    Analyser analyser(windowLength, 0.8F);
    analyser.magnitudes(toneOfBin(100.0));
    float before = analyser.previous()[100];
    for (int frame = 0; frame < 20; ++frame) {
        analyser.magnitudes({});
        EXPECT_FLOAT_EQ(analyser.previous()[100], 0.8F * before);
        before = analyser.previous()[100];
    }
}

TEST(Analyser, aShortSliceIsPaddedAndTheWindowIsNotStretched)
{
    std::vector<float> padded = toneOfBin(37.0);
    padded.resize(windowLength);
    std::fill(padded.begin() + 300, padded.end(), 0.0F);
    Analyser whole(windowLength, 0.8F);
    Analyser cut(windowLength, 0.8F);
    const std::span<const float> expected = whole.magnitudes(padded);
    EXPECT_THAT(cut.magnitudes(std::span(padded).first(300)), testing::ElementsAreArray(expected));
}

TEST(Analyser, samplesBehindTheWindowDoNotCount)
{
    const std::vector<float> tone = toneOfBin(12.0);
    Analyser longer(windowLength, 0.8F);
    Analyser exact(windowLength, 0.8F);
    const std::span<const float> expected = exact.magnitudes(std::span(tone).first(windowLength));
    EXPECT_THAT(longer.magnitudes(tone), testing::ElementsAreArray(expected));
}

TEST(Analyser, theTopFrequencyIsPackedIntoTheFirstBin)
{
    std::vector<float> alternating(windowLength);
    for (std::size_t index = 0; index < windowLength; ++index)
        alternating[index] = index % 2 == 0 ? 1.0F : -1.0F;
    Analyser analyser(windowLength, 0.0F);
    analyser.magnitudes(alternating);
    EXPECT_NEAR(analyser.previous()[0], 0.42, 0.001);
}

} // namespace
