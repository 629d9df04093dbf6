#include "demonstration/music/Song.h"

#include "demonstration/music/Form.h"
#include "demonstration/music/Harmony.h"
#include "tests/support/Sandbox.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <numeric>
#include <random>
#include <span>

namespace orvane::demo {
namespace {

using Channels = std::vector<std::vector<double>>;

double loudest(const std::vector<double>& channel)
{
    const auto [low, high] = std::minmax_element(channel.begin(), channel.end());
    return std::max(-*low, *high);
}

double power(const std::vector<double>& channel, std::size_t from, std::size_t to)
{
    double sum = 0;
    for (std::size_t index = from; index < to; ++index)
        sum += channel[index] * channel[index];
    return sum / static_cast<double>(to - from);
}

/// Power at one frequency, by the recursion of Goertzel.
double powerAt(std::span<const double> samples, double hertz)
{
    const double coefficient = 2 * std::cos(2 * std::numbers::pi * hertz / sampleRate);
    double last = 0;
    double before = 0;
    for (const double sample : samples) {
        const double next = sample + coefficient * last - before;
        before = last;
        last = next;
    }
    return last * last + before * before - coefficient * last * before;
}

/// Power of each of the twelve tones, counted from C, over the two octaves from F4 on, where no drum has a tone.
std::array<double, 12> powerOfTones(std::span<const double> samples)
{
    // Short enough for two oscillators that are out of tune to count as one tone.
    constexpr std::size_t block = 8192;
    std::array<double, 12> tones{};
    for (std::size_t at = 0; at + block <= samples.size(); at += block) {
        for (int semitone = 0; semitone < 24; ++semitone)
            tones[static_cast<std::size_t>((semitone + 5) % 12)] +=
                powerAt(samples.subspan(at, block), 349.2282 * std::exp2(semitone / 12.0));
    }
    return tones;
}

/// Share of the power that lies on the major scale of a tonic.
double shareInScale(const std::array<double, 12>& tones, int tonic)
{
    double inScale = 0;
    for (const int step : {0, 2, 4, 5, 7, 9, 11})
        inScale += tones[static_cast<std::size_t>((tonic + step) % 12)];
    return inScale / std::accumulate(tones.begin(), tones.end(), 0.0);
}

TEST(Song, theSameFactsGiveTheSameSamples)
{
    const Song song{.bpm = 121.7, .tonic = 4, .minor = true, .seconds = 6, .seed = 9};
    EXPECT_EQ(compose(song), compose(song));
    Song other = song;
    other.seed = 10;
    EXPECT_NE(compose(song), compose(other));
}

TEST(Song, hasItsLengthOnBothChannels)
{
    for (const double seconds : {0.2, 1.0, 7.123}) {
        const Channels channels = compose({.seconds = seconds});
        ASSERT_EQ(channels.size(), 2U);
        EXPECT_EQ(channels[0].size(), static_cast<std::size_t>(std::lround(seconds * sampleRate)));
        EXPECT_EQ(channels[0].size(), channels[1].size());
    }
}

TEST(Song, aBeatLiesAtTheSampleNearestToIt)
{
    EXPECT_EQ(sampleOf({.bpm = 120}, 3), 66'150U);
    EXPECT_EQ(sampleOf({.bpm = 128, .leadIn = 0.5}, 4), 22'050U + 82'688U) << "82,687.5 rounds up";
}

TEST(Song, isSilentBeforeBeatZeroAndStruckAtIt)
{
    const Song song{.bpm = 100, .seconds = 4, .leadIn = 0.731};
    const Channels channels = compose(song);
    const std::size_t beat = sampleOf(song, 0);
    for (const std::vector<double>& channel : channels) {
        const auto struck =
            std::find_if(channel.begin(), channel.end(), [](double sample) { return std::abs(sample) > 0.01; });
        EXPECT_EQ(std::count(channel.begin(), channel.begin() + static_cast<std::ptrdiff_t>(beat), 0.0),
                  static_cast<std::ptrdiff_t>(beat));
        EXPECT_LE(static_cast<std::size_t>(struck - channel.begin()), beat + 10);
    }
}

TEST(Song, aKickIsStruckOnEveryBeatOfTheBeginning)
{
    const Song song{.bpm = 93.4, .seconds = 30, .leadIn = 0.2};
    const std::vector<double> left = compose(song)[0];
    // The level of the lows jumps where a kick begins, and nowhere in the second half of a beat.
    for (int beat = 1; beat < 6; ++beat) {
        const std::size_t at = sampleOf(song, beat);
        EXPECT_GT(power(left, at, at + 1000), 6 * power(left, at - 1000, at)) << beat;
    }
}

TEST(Song, staysBelowFullScale)
{
    std::mt19937 dice(test::seed());
    for (int round = 0; round < 8; ++round) {
        const Song song{.bpm = 40.0 + dice() % 181,
                        .tonic = static_cast<int>(dice() % 12),
                        .minor = dice() % 2 == 0,
                        .seconds = 10,
                        .seed = static_cast<unsigned>(dice())};
        const Channels channels = compose(song);
        EXPECT_NEAR(std::max(loudest(channels[0]), loudest(channels[1])), 0.9, 1e-9) << song.seed;
    }
}

TEST(Song, liesOnTheScaleOfItsKeyMoreThanOnAnyOther)
{
    for (int key = 0; key < 24; ++key) {
        const int tonic = key % 12;
        const bool minor = key >= 12;
        const Song song{
            .bpm = 160, .tonic = tonic, .minor = minor, .seconds = 12, .seed = static_cast<unsigned>(key + 3)};
        const std::array<double, 12> tones = powerOfTones(compose(song)[0]);
        const int relativeMajor = (minor ? tonic + 3 : tonic) % 12;
        EXPECT_GT(shareInScale(tones, relativeMajor), 0.95) << key;
        for (int other = 1; other < 12; ++other)
            EXPECT_GT(shareInScale(tones, relativeMajor), shareInScale(tones, relativeMajor + other)) << key;
    }
}

TEST(Song, isLoudestInItsChorusAndQuietInItsBreak)
{
    const Song song{.bpm = 120, .seconds = 64, .seed = 4};
    const std::vector<double> left = compose(song)[0];
    const auto powerOf = [&](const Section& section) {
        return power(left, sampleOf(song, section.firstBar * beatsInBar),
                     sampleOf(song, (section.firstBar + section.bars) * beatsInBar));
    };
    const std::vector<Section> form = formOf(32);
    ASSERT_EQ(form.size(), 7U);
    EXPECT_GT(powerOf(form[1]), 1.2 * powerOf(form[0]));
    EXPECT_GT(powerOf(form[3]), 1.2 * powerOf(form[1]));
    EXPECT_LT(powerOf(form[4]), 0.4 * powerOf(form[3]));
    EXPECT_GT(powerOf(form[5]), 2 * powerOf(form[4]));
    EXPECT_LT(powerOf(form[6]), 0.8 * powerOf(form[5]));
}

TEST(Harmony, everyFourBarsBeginOnTheTonic)
{
    for (unsigned seed = 0; seed < 24; ++seed) {
        for (const bool minor : {false, true})
            EXPECT_EQ(Harmony({.minor = minor, .seed = seed}).rootOf(8), 0) << seed;
    }
}

TEST(Harmony, countsStepsOfTheScaleInBothDirections)
{
    const Harmony minor({.tonic = 9, .minor = true});
    EXPECT_NEAR(minor.hertz(0, 261.6256), 440, 0.001);
    EXPECT_NEAR(minor.hertz(7, 261.6256), 880, 0.001);
    EXPECT_NEAR(minor.hertz(2, 261.6256), 523.251, 0.001);
    EXPECT_NEAR(minor.hertz(-1, 261.6256), 391.995, 0.001);
    EXPECT_NEAR(minor.hertz(-7, 261.6256), 220, 0.001);
}

TEST(Harmony, findsTheNearestToneOfAChord)
{
    const Harmony harmony({});
    EXPECT_EQ(harmony.nearestInChord(0, 0), 0);
    EXPECT_EQ(harmony.nearestInChord(6, 0), 7);
    EXPECT_EQ(harmony.nearestInChord(-2, 0), -3);
}

TEST(Form, sectionsFollowEachOtherWithoutAGap)
{
    for (int bars = 1; bars <= 200; ++bars) {
        int next = 0;
        for (const Section& section : formOf(bars)) {
            EXPECT_EQ(section.firstBar, next) << bars;
            EXPECT_GT(section.bars, 0) << bars;
            next += section.bars;
        }
        EXPECT_EQ(next, bars);
    }
}

TEST(Form, onlyTheBreakLeavesKicksOut)
{
    const std::vector<Section> form = formOf(32);
    EXPECT_EQ(std::count_if(form.begin(), form.end(), [](const Section& part) { return !part.kickOnEveryBeat; }), 1);
    EXPECT_FALSE(form[4].kickOnEveryBeat);
}

} // namespace
} // namespace orvane::demo
