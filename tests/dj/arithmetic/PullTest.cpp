#include "dj/arithmetic/Pull.h"

#include <gmock/gmock.h>

using namespace orvane;

TEST(MedianTempo, ofAnEmptySetIs120)
{
    EXPECT_EQ(DJ::medianTempo({}), 120.0);
}

TEST(MedianTempo, ofAnEvenCountIsTheUpperMiddleValue)
{
    EXPECT_EQ(DJ::medianTempo({130.0, 120.0}), 130.0);
    EXPECT_EQ(DJ::medianTempo({90.0, 140.0, 100.0, 130.0}), 130.0);
    EXPECT_EQ(DJ::medianTempo({90.0, 140.0, 100.0}), 100.0);
}

TEST(AlignOctave, aTrackAt70InASetAround140CountsAs140)
{
    EXPECT_EQ(DJ::alignOctave(70.0, 140.0), 140.0);
    EXPECT_EQ(DJ::alignOctave(170.0, 85.0), 85.0);
}

TEST(AlignOctave, aTrackAt190WithMedian90Is95)
{
    EXPECT_EQ(DJ::alignOctave(190.0, 90.0), 95.0);
}

TEST(AlignOctave, aTrackAt50WithMedian120Is100)
{
    EXPECT_EQ(DJ::alignOctave(50.0, 120.0), 100.0);
}

TEST(AlignOctave, aTempoBelow60WhoseDoubleIsAlsoBelow60StandsAsItIs)
{
    EXPECT_EQ(DJ::alignOctave(25.0, 120.0), 25.0);
}

TEST(AlignOctave, aDoublingPast200AndAHalvingUnder60AreRefused)
{
    EXPECT_EQ(DJ::alignOctave(101.0, 200.0), 101.0);
    EXPECT_EQ(DJ::alignOctave(100.0, 200.0), 200.0);
    EXPECT_EQ(DJ::alignOctave(119.0, 60.0), 119.0);
    EXPECT_EQ(DJ::alignOctave(120.0, 60.0), 60.0);
}

TEST(AlignOctave, ofTwoAsNearTheTempoItselfStands)
{
    // 80 and 160 are both 40 away from 120.
    EXPECT_EQ(DJ::alignOctave(80.0, 120.0), 80.0);
    EXPECT_EQ(DJ::alignOctave(160.0, 120.0), 160.0);
}

TEST(AlignOctave, withoutATempoOrATargetNothingIsAligned)
{
    EXPECT_EQ(DJ::alignOctave(0.0, 120.0), 0.0);
    EXPECT_EQ(DJ::alignOctave(-5.0, 120.0), -5.0);
    EXPECT_EQ(DJ::alignOctave(70.0, 0.0), 70.0);
    EXPECT_EQ(DJ::alignOctave(130.0, 0.0), 130.0);
    EXPECT_EQ(DJ::alignOctave(130.0, 0.0005), 65.0);
}

TEST(SpeedRatio, isThePullToTheMedianWithinItsLimits)
{
    EXPECT_DOUBLE_EQ(DJ::speedRatio(126.0, 120.0, 0.06), 1.05);
    EXPECT_DOUBLE_EQ(DJ::speedRatio(140.0, 120.0, 0.06), 1.06);
    EXPECT_DOUBLE_EQ(DJ::speedRatio(100.0, 120.0, 0.06), 0.94);
    EXPECT_DOUBLE_EQ(DJ::speedRatio(100.0, 120.0, 0.0), 1.0);
}
