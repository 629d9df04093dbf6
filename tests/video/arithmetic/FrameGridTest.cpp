#include "video/arithmetic/FrameGrid.h"

#include <gtest/gtest.h>
#include <vector>

using namespace orvane::Video;

namespace {

TEST(FrameGrid, cutsTheTrackIntoWholeFrames)
{
    EXPECT_EQ(frameGrid(44100 * 4, 44100.0, 30), (FrameGrid{.samplesPerFrame = 1470, .frameCount = 120}));
    EXPECT_EQ(frameGrid(44100 * 4 - 1, 44100.0, 30).frameCount, 119);
}

TEST(FrameGrid, aTrackOfTenMillisecondsHasOneFrame)
{
    EXPECT_EQ(frameGrid(441, 44100.0, 30).frameCount, 1);
}

TEST(FrameGrid, aRateThatIsNoMultipleOfTheFrameRateGetsATruncatedHop)
{
    // 22050 / 24 is 918.75: after a minute the analysis is 1080 samples behind.
    const FrameGrid grid = frameGrid(22050 * 60, 22050.0, 24);
    EXPECT_EQ(grid.samplesPerFrame, 918);
    const std::vector<float> track(22050 * 60);
    EXPECT_EQ(samplesOf(1440, grid, track, 1024).data() - track.data(), 22050 * 60 - 1080);
}

TEST(FrameGrid, aSliceIsCutOffAtTheEndAndEmptyPastIt)
{
    const std::vector<float> track(1000);
    const FrameGrid grid{.samplesPerFrame = 300, .frameCount = 3};
    EXPECT_EQ(samplesOf(0, grid, track, 512).size(), 512);
    EXPECT_EQ(samplesOf(2, grid, track, 512).size(), 400);
    EXPECT_EQ(samplesOf(2, grid, track, 512).data(), track.data() + 600);
    EXPECT_TRUE(samplesOf(4, grid, track, 512).empty());
    EXPECT_TRUE(samplesOf(10, {.samplesPerFrame = 100, .frameCount = 10}, track, 512).empty());
}

} // namespace
