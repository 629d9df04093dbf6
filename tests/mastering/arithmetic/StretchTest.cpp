#include "mastering/arithmetic/Stretch.h"

#include "tests/mastering/arithmetic/Signals.h"

#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <numbers>

using namespace orvane;
using namespace orvane::test;
using Master::pitchShift;
using Master::stretch;

namespace {

constexpr double rate = 44100.0;

/// The definition, written down as plainly as it can be.
Samples plainStretch(const Samples& x, double ratio)
{
    const auto count = long(x.size());
    const long inputHop = std::lround(ratio * 1024.0);
    const long outLength = long(double(count) / ratio) + 2048;
    Samples sum(std::size_t(outLength), 0.0);
    Samples weight(std::size_t(outLength), 0.0);
    const auto at = [](auto& values, long index) -> auto&
    {
        return values[std::size_t(index)];
    };
    long inPos = 0;
    long outPos = 0;
    for (; inPos + 2048 + 220 < count && outPos + 2048 < outLength; inPos += inputHop, outPos += 1024) {
        long best = inPos;
        double bestScore = -std::numeric_limits<double>::infinity();
        for (long c = std::max(inPos - 220, 0L); outPos > 0 && c <= std::min(inPos + 220, count - 2048); c += 8) {
            double score = 0.0;
            for (long k = 0; k < 1024; k += 4)
                score += at(sum, outPos + k) * at(x, c + k);
            if (score > bestScore) {
                bestScore = score;
                best = c;
            }
        }
        for (long k = 0; k < 2048; ++k) {
            const double w = std::sqrt(2.0 / 3.0) * (1.0 - std::cos(2.0 * std::numbers::pi * double(k) / 2048.0));
            at(sum, outPos + k) += at(x, best + k) * w;
            at(weight, outPos + k) += w;
        }
    }
    sum.resize(std::size_t(std::min(outLength, outPos + 1024)));
    for (std::size_t i = 0; i < sum.size(); ++i)
        sum[i] = weight[i] > 0.0001 ? sum[i] / weight[i] : sum[i];
    return sum;
}

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
            EXPECT_EQ(stretch(samples, ratio), plainStretch(samples, ratio)) << ratio << " of " << samples.size();
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
