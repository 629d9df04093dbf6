#include "mastering/arithmetic/WindowEnergy.h"

#include "tests/mastering/arithmetic/Signals.h"

#include <gmock/gmock.h>

using namespace orvane;
using namespace orvane::test;
using Master::WindowEnergy;
using Master::Windows;

namespace {

Samples plain(const Samples& samples, Windows windows)
{
    Samples means;
    for (std::size_t start = 0; start + windows.length <= samples.size(); start += windows.hop) {
        double sum = 0.0;
        for (std::size_t frame = start; frame < start + windows.length; ++frame)
            sum += samples[frame] * samples[frame];
        means.push_back(sum / double(windows.length));
    }
    return means;
}

} // namespace

TEST(WindowEnergy, everyLengthAndHopGivesThePlainMeans)
{
    const Samples samples = noise(1000, 0.3);
    for (const Windows windows : {Windows{40, 10}, Windows{41, 10}, Windows{49, 10}, Windows{7, 10}, Windows{10, 10},
                                  Windows{1, 1}, Windows{1000, 3}, Windows{1001, 3}, Windows{30, 7}}) {
        for (const std::size_t piece : {1u, 13u, 1000u}) {
            WindowEnergy energy(windows);
            for (std::size_t start = 0; start < samples.size(); start += piece)
                energy.add(std::span(samples).subspan(start, std::min(piece, samples.size() - start)));
            const Samples wanted = plain(samples, windows);
            const Samples found = energy.meanSquares();
            ASSERT_EQ(found.size(), wanted.size()) << windows.length << " every " << windows.hop;
            for (std::size_t window = 0; window < found.size(); ++window)
                ASSERT_NEAR(found[window], wanted[window], 1e-14);
        }
    }
}

TEST(WindowEnergy, windowsWithoutLengthOrHopAreNone)
{
    WindowEnergy noHop({.length = 3, .hop = 0});
    noHop.add(noise(10, 0.1));
    EXPECT_TRUE(noHop.meanSquares().empty());
    EXPECT_EQ((Windows{.length = 0, .hop = 1}.countIn(10)), 0u);
    EXPECT_EQ((Windows{.length = 3, .hop = 0}.countIn(10)), 0u);
    EXPECT_EQ((Windows{.length = 10, .hop = 3}.countIn(9)), 0u);
    EXPECT_EQ((Windows{.length = 10, .hop = 3}.countIn(10)), 1u);
    EXPECT_EQ((Windows{.length = 10, .hop = 3}.countIn(13)), 2u);
}
