#include "platform/video/RateControl.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <numeric>
#include <vector>

using namespace orvane;

namespace {

constexpr std::int64_t bitRate = 228096;
constexpr int framesPerSecond = 30;
constexpr int keyInterval = 60;
constexpr std::int64_t pixels = std::int64_t(1080) * 1920;
constexpr int minute = 60 * framesPerSecond;

using Picture = RateControl::Picture;

RateControl portrait()
{
    return {bitRate, framesPerSecond, keyInterval, pixels};
}

/// An encoder whose pictures have `cost` bits at quantizer 0, half as many `halving` quantizers further on, and come
/// out `held` pictures late.
struct Encoder
{
    std::function<double(int frame, Picture picture)> cost;
    int held = 0;
    double halving = 6.0;

    struct Encoded
    {
        std::vector<std::int64_t> bits;
        std::vector<int> quantizers;

        /// In bit/s.
        double rate(int from, int end) const
        {
            const auto first = bits.begin();
            return double(std::accumulate(first + from, first + end, std::int64_t(0))) * framesPerSecond / (end - from);
        }
    };

    Encoded encode(int frames) const
    {
        RateControl control = portrait();
        Encoded encoded;
        for (int frame = 0; frame < frames; ++frame) {
            const Picture picture = kind(frame);
            const int quantizer = control.quantizer(picture);
            encoded.quantizers.push_back(quantizer);
            encoded.bits.push_back(std::llround(cost(frame, picture) * std::exp2(-quantizer / halving)));
            if (const int out = frame - held; out >= 0)
                control.spend(kind(out), encoded.quantizers[std::size_t(out)], encoded.bits[std::size_t(out)]);
        }
        return encoded;
    }

    static Picture kind(int frame) { return frame % keyInterval == 0 ? Picture::Key : Picture::Between; }
};

std::function<double(int, Picture)> steady(double times)
{
    return [times](int, Picture picture) { return times * double(pixels) * (picture == Picture::Key ? 1.7 : 0.05); };
}

TEST(RateControl, steadyPicturesKeepToTheBitRate)
{
    for (const int held : {0, 3, 8}) {
        for (const double times : {0.3, 1.0, 3.0, 10.0}) {
            const Encoder::Encoded encoded = Encoder{.cost = steady(times), .held = held}.encode(minute);
            EXPECT_NEAR(encoded.rate(0, minute) / bitRate, 1.0, 0.02) << times << " times, " << held << " held";
        }
    }
}

TEST(RateControl, quantizersSettleWhereNothingChanges)
{
    const Encoder::Encoded encoded = Encoder{.cost = steady(2.0), .held = 3}.encode(minute);
    std::vector<int> between;
    for (int frame = minute / 2; frame < minute; ++frame) {
        if (Encoder::kind(frame) == Picture::Between)
            between.push_back(encoded.quantizers[std::size_t(frame)]);
    }
    const auto [least, most] = std::minmax_element(between.begin(), between.end());
    EXPECT_LE(*most - *least, 1);
}

TEST(RateControl, picturesThatAreAllKeysKeepToTheBitRate)
{
    RateControl control(bitRate, framesPerSecond, 1, pixels);
    std::int64_t spent = 0;
    for (int frame = 0; frame < minute; ++frame) {
        const int quantizer = control.quantizer(Picture::Key);
        const std::int64_t bits = std::llround(0.03 * double(pixels) * std::exp2(-quantizer / 6.0));
        control.spend(Picture::Key, quantizer, bits);
        spent += bits;
    }
    EXPECT_NEAR(double(spent) / 60.0 / bitRate, 1.0, 0.02);
    EXPECT_NEAR(control.quantizer(Picture::Key), 6.0 * std::log2(0.03 * double(pixels) * framesPerSecond / bitRate),
                1.0);
}

TEST(RateControl, sizesThatFollowTheQuantizerAnotherWayKeepToTheBitRateToo)
{
    for (const double halving : {4.5, 8.0}) {
        const Encoder::Encoded encoded = Encoder{.cost = steady(1.0), .held = 3, .halving = halving}.encode(minute);
        EXPECT_NEAR(encoded.rate(0, minute) / bitRate, 1.0, 0.05) << halving;
    }
}

TEST(RateControl, aTrackThatGetsLouderOrQuieterKeepsToTheBitRate)
{
    for (const double change : {0.1, 10.0}) {
        const Encoder encoder{.cost =
                                  [change](int frame, Picture picture) {
                                      return steady(frame < minute / 2 || picture == Picture::Key ? 1.0 : change)(
                                          frame, picture);
                                  },
                              .held = 3};
        const Encoder::Encoded encoded = encoder.encode(minute);
        EXPECT_NEAR(encoded.rate(0, minute) / bitRate, 1.0, 0.05) << change;
        EXPECT_NEAR(encoded.rate(minute - 600, minute) / bitRate, 1.0, 0.15) << change;
    }
}

TEST(RateControl, whatIsSavedInSilenceIsNotSpentAtOnce)
{
    constexpr int silence = 20 * framesPerSecond;
    const Encoder encoder{.cost =
                              [](int frame, Picture picture) {
                                  const bool moves = frame >= silence && picture == Picture::Between;
                                  return moves ? 0.05 * double(pixels) : 0.002 * double(pixels);
                              },
                          .held = 3};
    const Encoder::Encoded encoded = encoder.encode(minute);
    EXPECT_EQ(encoded.quantizers[std::size_t(silence - 1)], RateControl::finest);
    // A second in, it is known what bars that move cost.
    for (int frame = silence + framesPerSecond; frame + framesPerSecond < minute; frame += framesPerSecond)
        EXPECT_LT(encoded.rate(frame, frame + framesPerSecond) / bitRate, 4.5) << frame;
    EXPECT_NEAR(encoded.rate(0, minute) / bitRate, 1.0, 0.15);
}

TEST(RateControl, aKeyPictureIsQuantizedHalfAsCoarsely)
{
    const RateControl control = portrait();
    EXPECT_EQ(control.quantizer(Picture::Between) - control.quantizer(Picture::Key), 6);
}

TEST(RateControl, theFirstPicturesAreGuessedFromTheirSize)
{
    const int whole = portrait().quantizer(Picture::Between);
    EXPECT_GE(whole, 24);
    EXPECT_LE(whole, 34);
    const RateControl quarter(bitRate, framesPerSecond, keyInterval, pixels / 4);
    EXPECT_EQ(quarter.quantizer(Picture::Between), whole - 12);
}

TEST(RateControl, quantizersStayWithinTheirRange)
{
    const Encoder::Encoded nothing = Encoder{.cost = steady(0.0)}.encode(600);
    EXPECT_EQ(nothing.quantizers.back(), RateControl::finest);
    const Encoder::Encoded noise = Encoder{.cost = steady(1e4)}.encode(600);
    EXPECT_EQ(noise.quantizers.back(), RateControl::coarsest);
}

TEST(RateControl, aDebtTakesAtMostThreeQuartersOfWhatAPictureIsGiven)
{
    RateControl control = portrait();
    const int before = control.quantizer(Picture::Between);
    // At quantizer 0 a picture costs its bits: the guess stays what it was, and the debt is all that changes.
    const auto asGuessed = std::int64_t(0.05 * double(pixels));
    for (int frame = 0; frame < 3000; ++frame)
        control.spend(Picture::Between, 0, asGuessed);
    EXPECT_EQ(control.quantizer(Picture::Between), before + 12);
}

TEST(RateControl, aDebtIsMadeUpForOverTenSeconds)
{
    RateControl control = portrait();
    const int before = control.quantizer(Picture::Between);
    // Half of what ten seconds are given, in one picture that is no dearer than others but less coarse.
    const std::int64_t half = bitRate * 10 / 2;
    const double quantizer = 6.0 * std::log2(0.05 * double(pixels) / double(half));
    control.spend(Picture::Between, int(std::lrint(quantizer)), half);
    EXPECT_EQ(control.quantizer(Picture::Between), before + 6);
}

} // namespace
