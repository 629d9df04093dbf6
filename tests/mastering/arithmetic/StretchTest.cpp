#include "mastering/arithmetic/Stretch.h"

#include "tests/mastering/arithmetic/Reference.h"
#include "tests/mastering/arithmetic/Signals.h"

#include <cmath>
#include <gmock/gmock.h>
#include <limits>

using namespace orvane;
using namespace orvane::test;
using Master::pitchShift;
using Master::stretch;

namespace {

constexpr double rate = 44100.0;

/// Frequency of a tone, by where it rises through zero.
double frequencyOf(const Samples& samples)
{
    std::vector<double> rises;
    for (std::size_t frame = 4096; frame + 4096 < samples.size(); ++frame) {
        if (samples[frame - 1] < 0.0 && samples[frame] >= 0.0)
            rises.push_back(double(frame) - samples[frame] / (samples[frame] - samples[frame - 1]));
    }
    return rate * double(rises.size() - 1) / (rises.back() - rises.front());
}

double cents(double frequency, double wanted)
{
    return 1200.0 * std::log2(frequency / wanted);
}

} // namespace

TEST(Stretch, isThePlainDefinitionToTheBit)
{
    for (const double ratio : {0.5, 0.8, 0.92, 0.9995, 1.03, 1.08, 1.2, 2.7}) {
        for (const Samples& samples : {music(1.5, rate, 1).front(), noise(60'000, 0.3), silence(30'000),
                                       tone(1000.0, -6.0, 1.0, rate), noise(8193, 0.3)})
            EXPECT_EQ(stretch(samples, ratio), Reference::stretch(samples, ratio)) << ratio << " of " << samples.size();
    }
}

TEST(Stretch, aToneKeepsItsPitch)
{
    for (const double ratio : {0.92, 0.94, 0.97, 1.02, 1.05, 1.08}) {
        const Samples found = stretch(tone(1000.0, -6.0, 6.0, rate), ratio);
        EXPECT_NEAR(cents(frequencyOf(found), 1000.0), 0.0, 3.0) << ratio;
    }
}

TEST(Stretch, lengthIsWholeFramesOfTheInputOverTheRatio)
{
    for (const double ratio : {0.92, 0.94, 1.05, 1.08}) {
        const std::size_t frames = 441'000;
        const double wanted = double(frames) / ratio;
        EXPECT_NEAR(double(stretch(noise(frames, 0.2), ratio).size()), wanted, 3.0 * 1024.0) << ratio;
    }
}

TEST(Stretch, aSignalOf8192SamplesOrFewerPassesUnchanged)
{
    const Samples samples = noise(8192, 0.3);
    EXPECT_EQ(stretch(samples, 1.06), samples);
    EXPECT_EQ(pitchShift(samples, 2.0), samples);
    EXPECT_NE(stretch(noise(8193, 0.3), 1.06).size(), 8193u);
    EXPECT_TRUE(stretch({}, 1.06).empty());
}

TEST(Stretch, leavesAsItIsWhatItCannotChange)
{
    const Samples samples = noise(9000, 0.3);
    for (const double ratio :
         {0.0, -1.0, 1.0, 1.0001, 0.9999, 0.0004, std::nan(""), std::numeric_limits<double>::infinity()})
        EXPECT_EQ(stretch(samples, ratio), samples) << ratio;
}

TEST(Stretch, aSteadySoundKeepsItsLevel)
{
    const auto power = [](const Samples& samples) {
        double sum = 0.0;
        for (std::size_t frame = 4096; frame + 4096 < samples.size(); ++frame)
            sum += samples[frame] * samples[frame];
        return sum / double(samples.size() - 8192);
    };
    const Samples sound = tone(330.0, -6.0, 4.0, rate);
    EXPECT_NEAR(10.0 * std::log10(power(stretch(sound, 0.95)) / power(sound)), 0.0, 0.1);
}

TEST(PitchShift, movesAToneBySemitonesAndKeepsItsLengthAboutTheSame)
{
    for (const int semitones : {-2, -1, 1, 2}) {
        const Samples sound = tone(1000.0, -6.0, 6.0, rate);
        const Samples found = pitchShift(sound, semitones);
        EXPECT_NEAR(cents(frequencyOf(found), 1000.0), 100.0 * semitones, 3.0);
        EXPECT_NEAR(double(found.size()), double(sound.size()), 3.0 * 1024.0);
    }
}

TEST(PitchShift, aHundredthOfASemitoneIsNone)
{
    const Samples samples = noise(9000, 0.3);
    EXPECT_EQ(pitchShift(samples, 0.01), samples);
    EXPECT_EQ(pitchShift(samples, -0.01), samples);
    EXPECT_NE(pitchShift(samples, 0.5), samples);
}
