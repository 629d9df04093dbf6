#include "dj/arithmetic/Tempo.h"

#include "dj/arithmetic/OnsetEnvelope.h"
#include "tests/mastering/arithmetic/Signals.h"

#include <algorithm>
#include <gmock/gmock.h>

using namespace orvane;
using namespace orvane::test;

namespace {

constexpr double rate = 44100.0;

/// An onset of height 1 every `period` frames.
Samples pulses(std::size_t frames, std::size_t period)
{
    Samples envelope(frames);
    for (std::size_t frame = 0; frame < frames; frame += period)
        envelope[frame] = 1.0;
    return envelope;
}

/// Onsets that come again `lag` frames later, and at no other distance.
Samples echoed(std::size_t frames, std::size_t lag)
{
    const Samples onsets = noise(frames + lag, 1.0);
    Samples envelope(frames);
    for (std::size_t frame = 0; frame < frames; ++frame)
        envelope[frame] = onsets[frame] + onsets[frame + lag];
    return envelope;
}

} // namespace

TEST(OnsetEnvelope, aSignalOf1024SamplesHasAnEmptyEnvelope)
{
    EXPECT_TRUE(DJ::onsetEnvelope(noise(1024, 0.3), rate).empty());
    EXPECT_TRUE(DJ::onsetEnvelope({}, rate).empty());
}

TEST(OnsetEnvelope, aSignalOfExactly1025SamplesHasOneEnvelopeFrameWithValue0)
{
    EXPECT_EQ(DJ::onsetEnvelope(noise(1025, 0.3), rate), Samples{0.0});
}

TEST(OnsetEnvelope, aPartialLastFrameIsDropped)
{
    EXPECT_EQ(DJ::onsetEnvelope(noise(1535, 0.3), rate).size(), 1u);
    EXPECT_EQ(DJ::onsetEnvelope(noise(1536, 0.3), rate).size(), 2u);
}

TEST(OnsetEnvelope, isEmptyWhereTheTransformCannotBeSetUp)
{
    EXPECT_TRUE(DJ::onsetEnvelope(noise(5000, 0.3), nullptr).empty());
}

TEST(OnsetEnvelope, theRateDoesNotEnter)
{
    const Samples samples = noise(20'000, 0.3);
    EXPECT_EQ(DJ::onsetEnvelope(samples, 8000.0), DJ::onsetEnvelope(samples, 96'000.0));
}

TEST(OnsetEnvelope, soundThatOnlyFallsSetsNothingIn)
{
    Samples samples = tone(1000.0, -6.0, 0.5, 32'000.0);
    std::fill(samples.begin() + 4096, samples.end(), 0.0);
    const Samples envelope = DJ::onsetEnvelope(samples, rate);
    EXPECT_GT(envelope[7], 0.0);
    for (std::size_t frame = 8; frame < envelope.size(); ++frame)
        EXPECT_EQ(envelope[frame], 0.0) << frame;
}

TEST(OnsetEnvelope, highSoundsCountMoreThanLowOnes)
{
    const auto onset = [](double frequency) {
        Samples samples = silence(4096);
        const Samples sound = tone(frequency, -6.0, 0.2, rate);
        samples.insert(samples.end(), sound.begin(), sound.end());
        const Samples envelope = DJ::onsetEnvelope(samples, rate);
        return *std::max_element(envelope.begin(), envelope.end());
    };
    // Frequencies in the middle of a bin: the same spectrum around them.
    const double bin = rate / 1024.0;
    const double ratio = onset(400.0 * bin) / onset(100.0 * bin);
    EXPECT_NEAR(ratio, (0.25 + 0.75 * 400.0 / 512.0) / (0.25 + 0.75 * 100.0 / 512.0), 0.2);
}

TEST(Tempo, anEnvelopeOf64FramesOrFewerGives120)
{
    EXPECT_EQ(DJ::tempo(pulses(64, 30), rate), 120.0);
    EXPECT_FALSE(DJ::tempoLag(pulses(64, 30), rate));
    EXPECT_EQ(DJ::tempoLag(pulses(65, 30), rate), 30u);
    EXPECT_EQ(DJ::tempo({}, rate), 120.0);
}

TEST(Tempo, aRangeWithoutTwoLagsGives120)
{
    // A minute has 117, 176 and 209 frames: lags of 2 at the least, and of 1 or 2 at the most.
    for (const double slow : {1000.0, 1500.0, 1783.0}) {
        EXPECT_EQ(DJ::tempo(pulses(500, 4), slow), 120.0);
        EXPECT_FALSE(DJ::tempoLag(pulses(500, 4), slow));
    }
}

TEST(Tempo, isFrom70To180WithBothOfThem)
{
    // A minute has 180 times 29 and 70 times 72 frames.
    EXPECT_EQ(DJ::tempo(echoed(4000, 29), 44544.0), 180.0);
    EXPECT_EQ(DJ::tempo(echoed(4000, 72), 43008.0), 70.0);
    // 29 frames are at 181 beats a minute, and 73 at 70.3.
    EXPECT_NE(DJ::tempoLag(echoed(4000, 29), 181.0 * 29.0 * 512.0 / 60.0), 29u);
    EXPECT_NEAR(DJ::tempo(echoed(4000, 73), 70.3 * 73.0 * 512.0 / 60.0), 70.3, 1e-9);
}

TEST(Tempo, theLagsAt44100HzAreFrom29To73)
{
    for (std::size_t lag = 29; lag <= 73; ++lag)
        EXPECT_EQ(DJ::tempoLag(echoed(4000, lag), rate), lag);
    EXPECT_NE(DJ::tempoLag(echoed(4000, 28), rate), 28u);
    EXPECT_NE(DJ::tempoLag(echoed(4000, 74), rate), 74u);
}

TEST(Tempo, isThatOfTheLag)
{
    EXPECT_DOUBLE_EQ(DJ::tempo(echoed(4000, 40), rate), 60.0 * rate / 512.0 / 40.0);
}

TEST(Tempo, theShortestOfEqualLagsStands)
{
    EXPECT_EQ(DJ::tempoLag(Samples(500, 0.0), rate), 29u);
}

TEST(Tempo, aSmallGainChangesNothing)
{
    const Samples samples = music(6.0, rate, 1).front();
    const Samples loud = DJ::onsetEnvelope(samples, rate);
    const Samples quiet = DJ::onsetEnvelope(louder(samples, -31.0), rate);
    EXPECT_EQ(DJ::tempoLag(loud, rate), DJ::tempoLag(quiet, rate));
}
