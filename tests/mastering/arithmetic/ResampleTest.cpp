#include "mastering/arithmetic/Resample.h"

#include "tests/mastering/arithmetic/Signals.h"

#include <cmath>
#include <gmock/gmock.h>
#include <limits>

using namespace orvane;
using namespace orvane::test;
using Master::resample;

namespace {

constexpr double rate = 44100.0;

} // namespace

TEST(Resample, aRatioNearOneChangesNothing)
{
    const Samples samples = noise(1000, 0.3);
    for (const double ratio : {1.0, 1.0001, 0.9999, 0.0, -2.0, std::nan(""), std::numeric_limits<double>::infinity()})
        EXPECT_EQ(resample(samples, ratio), samples) << ratio;
    EXPECT_NE(resample(samples, 1.001), samples);
    EXPECT_NE(resample(samples, 0.999), samples);
    EXPECT_NE(resample(samples, 1.0001005), samples);
    EXPECT_NE(resample(samples, 0.9998995), samples);
}

TEST(Resample, tooFewSamplesAreReturnedAsTheyAre)
{
    EXPECT_EQ(resample({0.5}, 0.5), (Samples{0.5}));
    EXPECT_EQ(resample({}, 0.5), Samples{});
    EXPECT_EQ(resample({0.1, 0.2, 0.3}, 1.6), (Samples{0.1, 0.2, 0.3}));
    EXPECT_EQ(resample({0.0, 1.0, 2.0, 3.0}, 2.0), (Samples{0.0, 2.0}));
}

TEST(Resample, interpolatesInAStraightLine)
{
    EXPECT_EQ(resample({0.0, 1.0, 3.0}, 0.5), (Samples{0.0, 0.5, 1.0, 2.0, 0.0, 0.0}));
    EXPECT_EQ(resample({0.0, 1.0, 2.0, 3.0, 4.0, 5.0}, 1.5), (Samples{0.0, 1.5, 3.0, 4.5}));
    EXPECT_EQ(resample({7.0, 6.0, 5.0, 4.0, 3.0, 2.0, 1.0, 0.0}, 3.0), (Samples{7.0, 4.0}));
}

TEST(Resample, whatLiesAtTheLastSampleOrPastItStaysZero)
{
    EXPECT_EQ(resample({1.0, 1.0, 1.0, 1.0}, 0.5), (Samples{1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 0.0, 0.0}));
    EXPECT_EQ(resample({1.0, 1.0, 1.0, 1.0}, 0.75), (Samples{1.0, 1.0, 1.0, 1.0, 0.0}));
    EXPECT_EQ(resample({1.0, 1.0, 1.0, 1.0, 1.0}, 2.0), (Samples{1.0, 1.0}));
}

TEST(Resample, theLengthIsTruncated)
{
    EXPECT_EQ(resample(noise(100, 0.1), 0.3).size(), 333u);
    EXPECT_EQ(resample(noise(16000, 0.1), 16000.0 / 44100.0).size(), 44100u);
    EXPECT_EQ(resample({0.0, 1.0}, 0.0005).size(), 4000u);
}

TEST(Resample, aToneKeepsItsPitch)
{
    const Samples resampled = resample(tone(100.0, -6.0, 1.0, 16000.0), 16000.0 / rate);
    const Samples wanted = tone(100.0, -6.0, 1.0, rate);
    ASSERT_EQ(resampled.size(), wanted.size());
    for (std::size_t frame = 0; frame < 43000; ++frame)
        ASSERT_NEAR(resampled[frame], wanted[frame], 1e-3);
}
