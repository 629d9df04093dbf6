#include "dj/arithmetic/BassSwap.h"
#include "dj/arithmetic/Blend.h"
#include "dj/arithmetic/Cuts.h"
#include "dj/arithmetic/Fades.h"
#include "dj/arithmetic/Splice.h"
#include "tests/mastering/arithmetic/Signals.h"

#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <numbers>

using namespace orvane;
using namespace orvane::test;

namespace {

constexpr double rate = 44100.0;

double power(const Samples& samples, std::size_t first, std::size_t count)
{
    double sum = 0.0;
    for (std::size_t frame = first; frame < first + count; ++frame)
        sum += samples[frame] * samples[frame];
    return sum / double(count);
}

/// What a tone comes out of the filter at, as a factor, once it has settled.
template <typename Filter>
double gainAt(double frequency, Filter filter)
{
    const Samples sound = tone(frequency, 0.0, 2.0, rate);
    Samples filtered;
    for (const double sample : sound)
        filtered.push_back(filter(sample));
    return std::sqrt(power(filtered, 44'100, 44'100) / power(sound, 44'100, 44'100));
}

} // namespace

TEST(Pole, fallsToHalfPowerAtItsCorner)
{
    DJ::Pole pole;
    const auto lowPass = [&](double sample) { return pole.lowPass(sample, 300.0, rate); };
    EXPECT_NEAR(gainAt(300.0, lowPass), std::sqrt(0.5), 0.01);
    EXPECT_NEAR(gainAt(30.0, lowPass), 1.0, 0.01);
    EXPECT_NEAR(gainAt(3000.0, lowPass), 0.1, 0.01);
    EXPECT_NE(pole.state, 0.0);
    pole.reset();
    EXPECT_EQ(pole.state, 0.0);
    EXPECT_DOUBLE_EQ(pole.lowPass(1.0, 300.0, rate), 1.0 - std::exp(-2.0 * std::numbers::pi * 300.0 / rate));
}

TEST(BassSwap, theOutgoingTrackHasLostItsBassAtTheEndAndTheIncomingOneAtTheStart)
{
    DJ::Pole pole;
    const auto gone = [&](double sample) { return DJ::highPassed(sample, 1.0, pole, rate); };
    const auto heldBack = [&](double sample) { return DJ::lowShelfIn(sample, 0.0, pole, rate); };
    EXPECT_NEAR(gainAt(50.0, gone), 50.0 / std::hypot(50.0, 300.0), 0.01);
    EXPECT_NEAR(gainAt(5000.0, gone), 1.0, 0.05);
    EXPECT_NEAR(gainAt(50.0, heldBack), 50.0 / std::hypot(50.0, 300.0), 0.01);
    const auto whole = [&](double sample) { return DJ::highPassed(sample, 0.0, pole, rate); };
    EXPECT_DOUBLE_EQ(gainAt(50.0, whole), 1.0);
    const auto allIn = [&](double sample) { return DJ::lowShelfIn(sample, 1.0, pole, rate); };
    EXPECT_DOUBLE_EQ(gainAt(50.0, allIn), 1.0);
}

TEST(Blend, ofTwoNoisesIsAsLoudAsEachWithinHalfADecibel)
{
    const std::size_t frames = 8 * 44'100;
    const Channels blended =
        DJ::blend({noise(frames, 0.2, 1)}, {noise(frames, 0.2, 2)}, frames, DJ::Bass::AsItIs, rate);
    for (std::size_t start = 0; start + 22'050 <= frames; start += 22'050)
        EXPECT_NEAR(10.0 * std::log10(power(blended[0], start, 22'050) / 0.04), 0.0, 0.5) << start;
}

TEST(Blend, beginsWithTheTailAndEndsWithTheHead)
{
    const Channels tail{Samples(1000, 0.5)};
    const Channels head{Samples(1000, -0.25)};
    const Samples blended = DJ::blend(tail, head, 1000, DJ::Bass::AsItIs, rate)[0];
    EXPECT_EQ(blended.front(), 0.5);
    EXPECT_NEAR(blended.back(), -0.25, 1e-15);
    EXPECT_EQ(DJ::blend(tail, head, 1, DJ::Bass::AsItIs, rate)[0], Samples{0.5});
    EXPECT_EQ(DJ::blend(tail, head, 0, DJ::Bass::Swapped, rate), Channels{Samples{}});
}

TEST(Blend, swapsTheBass)
{
    const std::size_t frames = 4 * 44'100;
    const Channels bass{tone(60.0, -6.0, 4.0, rate)};
    const Channels nothing{silence(frames)};
    const Samples plain = DJ::blend(bass, nothing, frames, DJ::Bass::AsItIs, rate)[0];
    const Samples going = DJ::blend(bass, nothing, frames, DJ::Bass::Swapped, rate)[0];
    const Samples coming = DJ::blend(nothing, bass, frames, DJ::Bass::Swapped, rate)[0];
    const auto lost = [&](const Samples& samples, std::size_t start) {
        return 10.0 * std::log10(power(samples, start, 4410) / power(plain, start, 4410));
    };
    EXPECT_NEAR(lost(going, 4410), 0.0, 0.5);
    EXPECT_LT(lost(going, 150'000), -9.0);
    const std::size_t half = frames / 2;
    EXPECT_LT(lost(going, half), -3.0);
    EXPECT_LT(lost(coming, half), -3.0);
}

TEST(Cuts, atMedian120AndCrossfade8ABarIs88200FramesAndTheFadeFourBars)
{
    EXPECT_EQ(DJ::cutsFor(8.0, 120.0, true), (DJ::Cuts{.fadeFrames = 352'800, .barFrames = 88'200}));
}

TEST(Cuts, crossfade4AtMedian70IsRoundedToOneBarAndAt200ToThree)
{
    EXPECT_EQ(DJ::cutsFor(4.0, 70.0, true), (DJ::Cuts{.fadeFrames = 151'200, .barFrames = 151'200}));
    EXPECT_EQ(DJ::cutsFor(4.0, 200.0, true), (DJ::Cuts{.fadeFrames = 158'760, .barFrames = 52'920}));
}

TEST(Cuts, aFadeIsOneBarAtLeastAndWithoutBarsJustSoLong)
{
    EXPECT_EQ(DJ::cutsFor(0.0, 120.0, true).fadeFrames, 88'200);
    EXPECT_EQ(DJ::cutsFor(3.3, 120.0, false).fadeFrames, std::int64_t(3.3 * 44100.0));
    EXPECT_EQ(DJ::cutsFor(3.0, 120.0, true).fadeFrames, 176'400);
    EXPECT_EQ(DJ::cutsFor(2.9999, 120.0, true).fadeFrames, 88'200);
}

TEST(Cuts, lengthsAreRoundedDownToWholeBars)
{
    const DJ::Cuts cuts{.fadeFrames = 300, .barFrames = 100};
    EXPECT_EQ(cuts.rounded(299), 200);
    EXPECT_EQ(cuts.rounded(300), 300);
    EXPECT_EQ(cuts.rounded(99), 0);
    EXPECT_EQ((DJ::Cuts{.barFrames = 100, .onBars = false}).rounded(299), 299);
    EXPECT_EQ((DJ::Cuts{.barFrames = 1}).rounded(299), 299);
    EXPECT_EQ((DJ::Cuts{.barFrames = 0}).rounded(299), 299);
}

TEST(Cuts, noTempoGivesACutThatOverflows)
{
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double bpm : {0.0, -1.0, infinity, std::nan(""), 1e-300}) {
        const DJ::Cuts cuts = DJ::cutsFor(1e300, bpm, true);
        EXPECT_GE(cuts.fadeFrames, 1) << bpm;
        EXPECT_GE(cuts.rounded(441'000), 0) << bpm;
    }
    EXPECT_EQ(DJ::wholeFrames(std::nan("")), 0);
    EXPECT_EQ(DJ::wholeFrames(-2.7), -2);
}

TEST(Fades, areStraightLinesFromAndToSilence)
{
    Channels channels(2, Samples(1000, 0.8));
    DJ::fadeIn(channels, 0.01, rate);
    EXPECT_EQ(channels[1][0], 0.0);
    EXPECT_DOUBLE_EQ(channels[1][110], 0.8 * 110.0 / 441.0);
    EXPECT_EQ(channels[1][441], 0.8);
    Channels ending(2, Samples(1000, 0.8));
    DJ::fadeOut(ending, rate);
    EXPECT_EQ(ending[0][0], 0.8);
    EXPECT_DOUBLE_EQ(ending[0][999], 0.8 * (1.0 - 0.999));
}

TEST(Fades, aShortSoundIsFadedOverItsLengthAndOneSampleIsLeftAlone)
{
    Channels shorter{Samples(4, 1.0)};
    DJ::fadeIn(shorter, 2.0, rate);
    EXPECT_EQ(shorter[0], (Samples{0.0, 0.25, 0.5, 0.75}));
    Channels single{Samples{1.0}};
    DJ::fadeIn(single, 2.0, rate);
    DJ::fadeOut(single, rate);
    EXPECT_EQ(single[0], Samples{1.0});
    Channels barely{Samples(9, 1.0)};
    DJ::fadeIn(barely, 1.9 / rate, rate);
    DJ::fadeIn(barely, -1.0, rate);
    EXPECT_EQ(barely[0], Samples(9, 1.0));
    Channels none;
    DJ::fadeIn(none, 2.0, rate);
    DJ::fadeOut(none, rate);
    EXPECT_TRUE(none.empty());
}

TEST(Splice, whatHasNoChannelsIsPassedOver)
{
    const auto mixOf = [](const std::vector<Channels>& tracks) {
        Samples mix;
        DJ::Splice splice({.cuts = {.fadeFrames = 300, .barFrames = 100}}, [&](const DJ::Piece& piece) {
            EXPECT_EQ(piece.position, std::int64_t(mix.size()));
            const auto& left = piece.channels[0];
            mix.insert(mix.end(), left.begin() + std::ptrdiff_t(piece.first), left.begin() + std::ptrdiff_t(piece.end));
        });
        for (const Channels& track : tracks)
            splice.add(track);
        splice.finish();
        EXPECT_EQ(splice.written(), std::int64_t(mix.size()));
        return mix;
    };
    const Channels one(2, noise(1500, 0.1, 1));
    const Channels two(2, noise(1700, 0.1, 2));
    EXPECT_EQ(mixOf({{}, one, {}, two, {}}), mixOf({one, two}));
    EXPECT_NE(mixOf({one, two}), mixOf({two, one}));
    EXPECT_EQ(mixOf({{}, {}}), Samples{});
    EXPECT_EQ(mixOf({one, two}).size(), 1200u + 1700u);
}
