#include "video/arithmetic/Spectrum.h"

#include <gtest/gtest.h>
#include <vector>

using namespace orvane::Video;

namespace {

TEST(BinOfBar, runsFromBin1ToBin368InEqualRatios)
{
    EXPECT_EQ(binOfBar(0, 48, 512), 1);
    EXPECT_EQ(binOfBar(24, 48, 512), 20);
    EXPECT_EQ(binOfBar(46, 48, 512), 325);
    EXPECT_EQ(binOfBar(47, 48, 512), 368);
}

TEST(BinOfBar, theLowestBarsShareABin)
{
    for (std::size_t bar = 0; bar < 6; ++bar)
        EXPECT_EQ(binOfBar(bar, 48, 512), 1) << bar;
    EXPECT_EQ(binOfBar(6, 48, 512), 2);
}

TEST(BinOfBar, aSingleBarShowsBin1)
{
    EXPECT_EQ(binOfBar(0, 1, 512), 1);
}

TEST(BinOfBar, staysWithinTheSpectrum)
{
    EXPECT_EQ(binOfBar(0, 48, 1), 0);
    EXPECT_EQ(binOfBar(3, 4, 0), 0);
}

TEST(Energy, isTheMeanOfTheLowestThird)
{
    const std::vector<float> spectrum{0.25F, 0.75F, 1.0F, 1.0F, 1.0F, 1.0F, 1.0F, 1.0F};
    EXPECT_FLOAT_EQ(energy(spectrum), 0.5F);
}

TEST(Energy, isNoneBelowThreeValues)
{
    EXPECT_EQ(energy(std::vector<float>{1.0F, 1.0F}), 0.0F);
    EXPECT_EQ(energy({}), 0.0F);
}

} // namespace
