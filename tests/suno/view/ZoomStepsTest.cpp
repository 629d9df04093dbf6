#include "suno/view/ZoomSteps.h"

#include <gtest/gtest.h>
#include <limits>

namespace orvane {

TEST(ZoomSteps, areNineInOrder)
{
    const std::array expected = {0.6, 0.7, 0.75, 0.8, 0.85, 0.9, 1.0, 1.1, 1.25};
    EXPECT_EQ(ZoomSteps::steps, expected);
    EXPECT_EQ(ZoomSteps::usual, 0.8);
}

TEST(ZoomSteps, everyStepLeadsToItsNeighbours)
{
    for (std::size_t index = 1; index < ZoomSteps::steps.size(); ++index) {
        EXPECT_EQ(ZoomSteps::nudged(ZoomSteps::steps[index - 1], 1), ZoomSteps::steps[index]);
        EXPECT_EQ(ZoomSteps::nudged(ZoomSteps::steps[index], -1), ZoomSteps::steps[index - 1]);
    }
}

TEST(ZoomSteps, aZoomBetweenStepsCountsAsTheNearest)
{
    EXPECT_EQ(ZoomSteps::nudged(0.77, 1), 0.8);
    EXPECT_EQ(ZoomSteps::nudged(0.78, 1), 0.85);
    EXPECT_EQ(ZoomSteps::nudged(0.77, 0), 0.75);
}

TEST(ZoomSteps, ofTwoEquallyNearStepsTheEarlierCounts)
{
    // 1.175 is as far from 1.1 as from 1.25 in halves: 1.1 + 0.075 and 1.25 - 0.075, also in this arithmetic.
    ASSERT_EQ(1.175 - 1.1, 1.25 - 1.175);
    EXPECT_EQ(ZoomSteps::nudged(1.175, 0), 1.1);
}

TEST(ZoomSteps, theEndsHold)
{
    EXPECT_EQ(ZoomSteps::nudged(1.25, 1), 1.25);
    EXPECT_EQ(ZoomSteps::nudged(0.6, -1), 0.6);
    EXPECT_EQ(ZoomSteps::nudged(5, 1), 1.25);
    EXPECT_EQ(ZoomSteps::nudged(0.25, -1), 0.6);
    EXPECT_EQ(ZoomSteps::nudged(0.8, std::numeric_limits<int>::max()), 1.25);
    EXPECT_EQ(ZoomSteps::nudged(0.8, std::numeric_limits<int>::min()), 0.6);
}

} // namespace orvane
