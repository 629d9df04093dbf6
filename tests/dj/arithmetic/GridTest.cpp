#include "dj/arithmetic/Grid.h"

#include "dj/arithmetic/OnsetEnvelope.h"
#include "tests/mastering/arithmetic/Signals.h"

#include <cmath>
#include <gmock/gmock.h>
#include <limits>

using namespace orvane;
using namespace orvane::test;
using DJ::Grid;

namespace {

constexpr double rate = 44100.0;
constexpr double framesASecond = rate / 512.0;

/// Onsets on every beat from `first` (a frame) on, `period` frames apart; every fourth, from `bar` on, is higher.
Samples beats(std::size_t frames, double first, double period, std::size_t bar = 0)
{
    Samples envelope(frames);
    std::size_t beat = 0;
    for (double position = first; position + 1.0 < double(frames); position += period, ++beat) {
        const auto frame = std::size_t(position);
        const double height = beat % 4 == bar ? 2.0 : 1.0;
        envelope[frame] += height * (1.0 - (position - double(frame)));
        envelope[frame + 1] += height * (position - double(frame));
    }
    return envelope;
}

double bpmOf(double period)
{
    return 60.0 * framesASecond / period;
}

} // namespace

TEST(Grid, anEnvelopeUnder17FramesGivesTheTempoAndZeros)
{
    EXPECT_EQ(DJ::grid(beats(16, 2.0, 5.0), 100.0, rate), Grid{.bpm = 100.0});
    EXPECT_NE(DJ::grid(beats(17, 2.0, 5.0), 100.0, rate), Grid{.bpm = 100.0});
    EXPECT_EQ(DJ::grid({}, 120.0, rate), Grid{.bpm = 120.0});
}

TEST(Grid, aTempoThatIsNotAboveZeroIsGivenBack)
{
    EXPECT_EQ(DJ::grid(beats(500, 2.0, 40.0), 0.0, rate), Grid{.bpm = 0.0});
    EXPECT_EQ(DJ::grid(beats(500, 2.0, 40.0), -3.0, rate), Grid{.bpm = -3.0});
}

TEST(Grid, findsTheTempoBetweenWholeLags)
{
    const Grid found = DJ::grid(beats(8000, 10.0, 43.3), bpmOf(43.0), rate);
    EXPECT_NEAR(found.bpm, bpmOf(43.3), 0.0003 * found.bpm);
    EXPECT_NEAR(found.phase, 10.0 / framesASecond + 512.0 / rate, 0.01);
}

TEST(Grid, thePhaseLiesOneHopAfterTheCombAndTheCueDoesNot)
{
    const Grid found = DJ::grid(beats(4000, 20.0, 40.0), bpmOf(40.0), rate);
    EXPECT_NEAR(found.phase, 21.0 / framesASecond, 0.3 / framesASecond);
    EXPECT_DOUBLE_EQ(found.cueIn, 20.0 / framesASecond);
}

TEST(Grid, theDownbeatIsTheHighestOfFourBeats)
{
    for (int bar = 0; bar < 4; ++bar)
        EXPECT_EQ(DJ::grid(beats(4000, 20.0, 40.0, std::size_t(bar)), bpmOf(40.0), rate).downbeat, bar);
}

TEST(Grid, ofEqualBeatsTheFirstIsTheDownbeat)
{
    Samples envelope(4000);
    for (std::size_t frame = 0; frame + 1 < 100 * 40; frame += 40)
        envelope[frame] = 1.0;
    EXPECT_EQ(DJ::grid(envelope, bpmOf(40.0), rate).downbeat, 0);
}

TEST(Grid, ofEqualCombsTheShortestPeriodAndTheSmallestOffsetStand)
{
    const DJ::Comb comb = DJ::bestComb(Samples(500, 0.0), 40.0);
    EXPECT_EQ(comb, (DJ::Comb{.offset = 0.0, .period = 40.0 * (1.0 + -40 * 0.0005)}));
}

TEST(Grid, aPeriodUnderTwoFramesIsSkipped)
{
    const Samples envelope = noise(500, 1.0);
    EXPECT_EQ(DJ::bestComb(envelope, 1.5), (DJ::Comb{.offset = 0.0, .period = 1.5}));
    EXPECT_GE(DJ::bestComb(envelope, 2.0).period, 2.0);
    Samples everySecond(500);
    for (std::size_t frame = 0; frame < everySecond.size(); frame += 2)
        everySecond[frame] = 1.0;
    EXPECT_EQ(DJ::bestComb(everySecond, 2.0), (DJ::Comb{.offset = 0.0, .period = 2.0}));
}

TEST(Grid, aTempoAtTheRangesEdgeCanRefinePastItByUpToTwoPerCent)
{
    const double period = 60.0 * framesASecond / 180.0;
    const Grid found = DJ::grid(beats(8000, 5.0, period * 0.98), 180.0, rate);
    EXPECT_NEAR(found.bpm, 183.6, 0.1);
    EXPECT_LE(found.bpm, 180.0 / 0.98 + 1e-9);
    EXPECT_GE(DJ::grid(beats(8000, 5.0, period * 0.96), 180.0, rate).bpm, 180.0 / 1.02 - 1e-9);
}

TEST(Grid, aBeatAtTheLastFrameDoesNotCount)
{
    Samples envelope(101 * 40 + 1);
    for (std::size_t frame = 0; frame + 1 < envelope.size(); frame += 40)
        envelope[frame] = 1.0;
    envelope.back() = 5.0;
    EXPECT_EQ(DJ::bestComb(envelope, 40.0), (DJ::Comb{.offset = 0.0, .period = 40.0}));
    EXPECT_EQ(DJ::grid(envelope, bpmOf(40.0), rate).downbeat, 0);
}

TEST(Grid, theCueIsTheFirstFrameAboveATenthOfTheLoudestOnset)
{
    for (const double loudness : {1.0, 1e-6}) {
        Samples envelope = silence(1000);
        envelope[100] = 0.05 * loudness;
        envelope[300] = 0.0999 * loudness;
        envelope[400] = 0.1001 * loudness;
        envelope[500] = loudness;
        EXPECT_DOUBLE_EQ(DJ::grid(envelope, 120.0, rate).cueIn, 400.0 / framesASecond);
    }
}

TEST(Grid, theCueIsTheStartWhereNoFrameExceedsATenthOfTheLoudest)
{
    Samples envelope = silence(1000);
    EXPECT_EQ(DJ::grid(envelope, 120.0, rate).cueIn, 0.0);
    envelope[300] = std::numeric_limits<double>::infinity();
    EXPECT_EQ(DJ::grid(envelope, 120.0, rate).cueIn, 0.0);
}

TEST(Grid, aBarIsFourBeats)
{
    const Grid grid{.bpm = 120.0};
    EXPECT_DOUBLE_EQ(grid.beatSeconds(), 0.5);
    EXPECT_DOUBLE_EQ(grid.barSeconds(), 2.0);
}

TEST(FirstBar, isTheGridsFirstBarLineWhereTheCueIsNotLater)
{
    EXPECT_DOUBLE_EQ((Grid{.bpm = 120.0, .phase = 0.2, .downbeat = 3, .cueIn = 1.7}.firstBar()), 1.7);
    EXPECT_DOUBLE_EQ((Grid{.bpm = 120.0, .phase = 0.2, .downbeat = 0, .cueIn = 0.0}.firstBar()), 0.2);
}

TEST(FirstBar, isTheFirstBarLineAtOrAfterTheCue)
{
    EXPECT_DOUBLE_EQ((Grid{.bpm = 120.0, .phase = 0.25, .downbeat = 1, .cueIn = 0.8}.firstBar()), 2.75);
    EXPECT_DOUBLE_EQ((Grid{.bpm = 120.0, .phase = 0.25, .downbeat = 1, .cueIn = 2.75}.firstBar()), 2.75);
    EXPECT_DOUBLE_EQ((Grid{.bpm = 120.0, .phase = 0.25, .downbeat = 1, .cueIn = 2.76}.firstBar()), 4.75);
}
