#include "demonstration/music/Song.h"
#include "mastering/Master.h"
#include "tests/dj/KnownTrack.h"
#include "tests/dj/MixFiles.h"
#include "tests/mastering/arithmetic/Signals.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>

using namespace orvane;
using namespace orvane::test;
using namespace Qt::Literals::StringLiterals;
using DJ::MixSettings;

namespace {

constexpr double rate = 44100.0;

/// Where in a window around `expected` a stroke sets in: the first sample at a quarter of the window's largest.
double onsetNear(const Samples& samples, double expected)
{
    const auto first = samples.begin() + std::ptrdiff_t(expected - 0.06 * rate);
    const auto last = first + std::ptrdiff_t(0.12 * rate);
    double largest = 0.0;
    for (auto sample = first; sample < last; ++sample)
        largest = std::max(largest, std::abs(*sample));
    const auto found = std::find_if(first, last, [&](double sample) { return std::abs(sample) >= 0.25 * largest; });
    return double(found - samples.begin());
}

double percentile(Samples values, double share)
{
    std::sort(values.begin(), values.end());
    return values[std::size_t(share * double(values.size() - 1))];
}

/// A tempo from which the stretch, which moves by whole samples, comes to 120 beats a minute and not only near.
double reached(int samplesIn1024)
{
    return 120.0 * 1024.0 / samplesIn1024;
}

double secondDifference(const Samples& samples, std::size_t frame)
{
    return std::abs(samples[frame - 1] - 2.0 * samples[frame] + samples[frame + 1]);
}

/// Where a frame is moved to hangs on the last bit of the hiss: it is the same in every run, and so are the distances.
Samples sameHiss(std::size_t count, unsigned salt)
{
    std::mt19937 generator(salt);
    Samples hiss(count);
    for (double& sample : hiss)
        sample = 0.003 * (2.0 * double(generator()) / double(std::mt19937::max()) - 1.0);
    return hiss;
}

struct RenderedSound : MixFiles
{
    /// Tracks of such tempi, each heard in a channel of its own.
    DJ::Set kickTracks(const std::vector<double>& tempi) const
    {
        DJ::Set set;
        for (std::size_t index = 0; index < tempi.size(); ++index) {
            const double lead = 0.1 * double(index);
            Samples kicks =
                playKit({.bpm = tempi[index], .pattern = Pattern::KickAlone, .seconds = 40.0, .intro = lead}).samples;
            const Samples hiss = sameHiss(kicks.size(), unsigned(index));
            std::transform(kicks.begin(), kicks.end(), hiss.begin(), kicks.begin(), std::plus<>());
            Channels channels{kicks, silence(kicks.size())};
            if (index % 2 == 1)
                std::swap(channels[0], channels[1]);
            set.append(track({u"track %1"_s.arg(index), tempi[index], {}, lead}, channels));
        }
        return set;
    }

    /// How far, in seconds, the kicks of both tracks are apart at each beat of each blend.
    static Samples kicksApart(const Channels& sound, const QList<DJ::Move>& moves)
    {
        Samples apart;
        for (const DJ::Move& move : moves) {
            // At the very ends of a blend one of the two kicks cannot be heard.
            for (int beat = 1; beat < 15; ++beat) {
                const double expected = (move.atSeconds + 0.5 * beat) * rate;
                apart.push_back(std::abs(onsetNear(sound[0], expected) - onsetNear(sound[1], expected)) / rate);
            }
        }
        return apart;
    }

    /// The same in a mix of tracks of such tempi, where they are as far apart as the plain definition has them.
    Samples kicksApartAt(const std::vector<double>& tempi, bool preservePitch = true) const
    {
        const DJ::Set set = kickTracks(tempi);
        const MixSettings settings{.filterSweep = false, .levelMatch = false, .preservePitch = preservePitch};
        const DJ::Mix mix = render(set, settings);
        EXPECT_EQ(mix.bpm, 120.0);
        EXPECT_EQ(mix.moves.size(), qsizetype(tempi.size()) - 1);
        const PlainMix wanted = plainMix(plain(set), settings, levelled);
        const Samples apart = kicksApart(heard(mix), mix.moves);
        EXPECT_EQ(apart, kicksApart(in24Bits(wanted.channels), wanted.moves));
        return apart;
    }
};

/// A swelling chord over a bass, without a stroke.
Channels pad(double seconds, double pitch)
{
    Channels channels(2, Samples(std::size_t(seconds * rate)));
    for (std::size_t frame = 0; frame < channels[0].size(); ++frame) {
        const double time = double(frame) / rate;
        const double swell = 0.6 + 0.4 * std::sin(0.9 * time);
        for (std::size_t channel = 0; channel < 2; ++channel) {
            double sum = 0.0;
            for (const double part : {0.25, 1.0, 1.26, 1.5, 4.0})
                sum += std::sin(6.283185307179586 * pitch * part * time + double(channel)) / (1.0 + part);
            channels[channel][frame] = 0.15 * swell * sum;
        }
    }
    return channels;
}

} // namespace

TEST_F(RenderedSound, kicksCoincideWithThoseOfATrackAtTheSetsOwnTempo)
{
    const Samples apart = kicksApartAt({reached(1064), 120.0, reached(990), 120.0, reached(1003)});
    // A frame is moved by up to 220 samples, 5 ms, and is not stretched within itself, which is another one.
    EXPECT_LT(percentile(apart, 0.95), 0.0065);
    EXPECT_LT(percentile(apart, 0.5), 0.0035);
}

TEST_F(RenderedSound, kicksOfTwoStretchedTracksAreApartByNoMoreThanBothMayBeMoved)
{
    const Samples apart = kicksApartAt({reached(1064), reached(990), reached(1003), reached(1085), 120.0});
    EXPECT_LT(percentile(apart, 1.0), 0.013);
    EXPECT_LT(percentile(apart, 0.5), 0.005);
}

TEST_F(RenderedSound, kicksCoincideInAMixAsOnARecordHoweverManyTracksAreStretched)
{
    // Nothing is moved to where it fits best, and no tempo is only nearly met: some samples are all that is left.
    for (const std::vector<double>& tempi :
         {std::vector{113.3, 120.0, 126.9, 120.0, 118.1}, std::vector{113.3, 126.9, 120.0, 118.1, 123.7}}) {
        const Samples apart = kicksApartAt(tempi, false);
        EXPECT_LT(percentile(apart, 0.95), 0.005);
        EXPECT_LT(percentile(apart, 1.0), 0.0005);
    }
}

TEST_F(RenderedSound, barLinesFallWhereTheMovesSayToTheSample)
{
    // A click on each bar line of a track, at another level for each.
    constexpr std::size_t bar = 84'672;
    DJ::Set set;
    for (int index = 0; index < 4; ++index) {
        const std::size_t lead = 4410 * std::size_t(index + 1);
        Channels channels(2, Samples(12 * bar + 777));
        for (std::size_t frame = lead; frame < channels[0].size(); frame += bar)
            channels[0][frame] = channels[1][frame] = 0.125 * (index + 1);
        set.append(track({u"track %1"_s.arg(index), 125.0, {}, double(lead) / rate}, channels));
    }
    const MixSettings settings{.filterSweep = false, .levelMatch = false, .fadeEdges = false};
    const DJ::Mix mix = render(set, settings);
    const Samples left = heard(mix)[0];
    std::vector<std::size_t> clicks;
    for (std::size_t frame = 0; frame < left.size(); ++frame) {
        if (left[frame] != 0.0)
            clicks.push_back(frame);
    }
    ASSERT_EQ(clicks.size(), left.size() / bar);
    for (std::size_t index = 0; index < clicks.size(); ++index)
        EXPECT_EQ(clicks[index], index * bar);
    ASSERT_EQ(mix.moves.size(), 3);
    for (int index = 0; index < 3; ++index) {
        const auto start = std::size_t(std::lround(mix.moves[index].atSeconds * rate));
        EXPECT_EQ(start % bar, 0u);
        // Where a blend begins the outgoing track is heard alone, and after its four bars the incoming one.
        EXPECT_EQ(left[start], 0.125 * (index + 1));
        EXPECT_EQ(left[start + 4 * bar], 0.125 * (index + 2));
        EXPECT_GT(left[start + 2 * bar], 0.125 * (index + 2));
    }
}

TEST_F(RenderedSound, levelsAtTheJointsStayWithinALoudnessUnit)
{
    DJ::Set set;
    for (int index = 0; index < 4; ++index) {
        const double deviation = 0.02 * (1 << index);
        set.append(track({u"track %1"_s.arg(index)}, {noise(24 * 44'100, deviation, unsigned(2 * index)),
                                                      noise(24 * 44'100, deviation, unsigned(2 * index + 1))}));
    }
    for (const bool sweep : {true, false}) {
        const DJ::Mix mix = render(set, {.filterSweep = sweep, .levelTarget = -20.0, .fadeEdges = false});
        const Channels sound = heard(mix);
        ASSERT_EQ(mix.moves.size(), 3);
        for (const DJ::Move& move : mix.moves) {
            // From three seconds before the blend to three behind it.
            for (double start = move.atSeconds - 3.0; start < move.atSeconds + 11.0; start += 1.0) {
                Channels window;
                for (const Samples& channel : sound)
                    window.emplace_back(channel.begin() + std::ptrdiff_t(start * rate),
                                        channel.begin() + std::ptrdiff_t((start + 1.0) * rate));
                EXPECT_NEAR(Master::measure(window, rate).integrated, -20.0, 1.0) << start;
            }
        }
    }
}

namespace {

/// Expects that no cut of the mix is rougher than what is usual in it; `ways` are how far into a blend there is one.
void expectSmooth(const DJ::Mix& mix, const Channels& sound, const std::vector<double>& ways)
{
    for (const Samples& samples : sound) {
        Samples differences;
        for (std::size_t frame = 1; frame + 1 < samples.size(); ++frame)
            differences.push_back(secondDifference(samples, frame));
        const double usual = percentile(differences, 0.999);
        for (const DJ::Move& move : mix.moves) {
            const auto start = std::size_t(std::lround(move.atSeconds * rate));
            for (const double way : ways) {
                const std::size_t cut = start + std::size_t(way * 352'800.0);
                for (std::size_t frame = cut - 20; frame < cut + 20; ++frame)
                    ASSERT_LE(secondDifference(samples, frame), usual) << way << " at " << frame;
            }
        }
        EXPECT_EQ(samples.front(), 0.0);
        EXPECT_NEAR(samples.back(), 0.0, 1e-4);
    }
}

} // namespace

TEST_F(RenderedSound, noCutClicksNotEvenInASmoothPad)
{
    DJ::Set set;
    const std::vector<double> tempi{120.0, 117.0, 123.0};
    const std::vector<double> pitches{220.0, 196.0, 261.6};
    for (std::size_t index = 0; index < tempi.size(); ++index)
        set.append(track({u"track %1"_s.arg(index), tempi[index], {}, 0.05}, pad(24.0, pitches[index])));
    const DJ::Mix mix = render(set, {});
    expectSmooth(mix, heard(mix), {0.0, 1.0});
    const DJ::Mix plain = render(set, {.filterSweep = false});
    expectSmooth(plain, heard(plain), {0.0, 0.02, 0.98, 1.0});
}

TEST_F(RenderedSound, neitherDoTheBeginningAndTheEndOfTheBassSwapInASong)
{
    DJ::Set set;
    const std::vector<double> tempi{120.0, 117.0, 123.0};
    for (std::size_t index = 0; index < tempi.size(); ++index) {
        set.append(track({u"track %1"_s.arg(index), tempi[index]},
                         demo::compose({.bpm = tempi[index], .tonic = 9, .seconds = 24.0, .seed = unsigned(index)})));
    }
    const DJ::Mix mix = render(set, {});
    expectSmooth(mix, heard(mix), {0.0, 0.02, 0.98, 1.0});
}
