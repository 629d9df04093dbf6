#include "mastering/arithmetic/Placement.h"

#include "tests/mastering/arithmetic/Reference.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <limits>

using namespace orvane;
using namespace orvane::test;
using Master::Placement;
using Master::placementForTag;
using Master::placementTag;
using Master::tagHits;
using Hits = std::vector<std::int64_t>;

namespace {

constexpr double rate = 44100.0;
constexpr std::int64_t second = 44100;
constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();

} // namespace

TEST(PlacementTag, everyNumberStandsForItsCase)
{
    EXPECT_EQ(placementForTag(0), Placement::startAndEnd());
    EXPECT_EQ(placementForTag(1), Placement::everySeconds(1));
    EXPECT_EQ(placementForTag(999), Placement::everySeconds(999));
    EXPECT_EQ(placementForTag(1000), Placement::timesAcross(0));
    EXPECT_EQ(placementForTag(1008), Placement::timesAcross(8));
    EXPECT_EQ(placementForTag(-1), Placement::scattered(1));
    EXPECT_EQ(placementForTag(-120), Placement::scattered(120));
    EXPECT_EQ(placementForTag(smallest), Placement::scattered(largest));
}

TEST(PlacementTag, whatIsStoredComesBack)
{
    for (const std::int64_t tag : {std::int64_t(0), std::int64_t(1), std::int64_t(999), std::int64_t(1000),
                                   std::int64_t(1004), std::int64_t(-1), std::int64_t(-60), largest, -largest})
        EXPECT_EQ(placementTag(placementForTag(tag)), tag);
}

TEST(PlacementTag, whatHasNoNumberOfItsCaseTakesTheNearest)
{
    EXPECT_EQ(placementTag(Placement::everySeconds(5000)), 999);
    EXPECT_EQ(placementTag(Placement::everySeconds(0)), 1);
    EXPECT_EQ(placementTag(Placement::scattered(0)), -1);
    EXPECT_EQ(placementTag(Placement::timesAcross(-3)), 1000);
    EXPECT_EQ(placementTag(Placement::timesAcross(largest)), largest);
}

TEST(PlacementTag, theDefaultIsEverySixtySeconds)
{
    EXPECT_EQ(Placement(), Placement::everySeconds(60));
}

TEST(TagHits, aTrackNotLongerThanTheTagHasNone)
{
    for (const Placement& placement :
         {Placement::startAndEnd(), Placement::everySeconds(1), Placement::scattered(1), Placement::timesAcross(4)}) {
        EXPECT_TRUE(tagHits(placement, second, 2 * second, rate, 1).empty());
        EXPECT_TRUE(tagHits(placement, second, second, rate, 1).empty());
        EXPECT_TRUE(tagHits(placement, second, 0, rate, 1).empty());
        EXPECT_TRUE(tagHits(placement, second, -1, rate, 1).empty());
    }
    EXPECT_EQ(tagHits(Placement::startAndEnd(), second + 1, second, rate, 1), (Hits{0, 1}));
    EXPECT_EQ(tagHits(Placement::timesAcross(1), 3, 1, rate, 1), (Hits{1}));
}

TEST(TagHits, startAndEndLieASecondFromTheEdges)
{
    EXPECT_EQ(tagHits(Placement::startAndEnd(), 10 * second, 2 * second, rate, 1), (Hits{44100, 308700}));
}

TEST(TagHits, startAndEndCoincideWhereThereIsLittleRoom)
{
    EXPECT_EQ(tagHits(Placement::startAndEnd(), second + 1000, second, rate, 1), (Hits{500}));
    EXPECT_EQ(tagHits(Placement::startAndEnd(), second + 1001, second, rate, 1), (Hits{500, 501}));
    EXPECT_EQ(tagHits(Placement::startAndEnd(), 3 * second, second, rate, 1), (Hits{second}));
    EXPECT_EQ(tagHits(Placement::startAndEnd(), 3 * second + 2, second, rate, 1), (Hits{second, second + 2}));
}

TEST(TagHits, regularHitsStartAfterOneIntervalAndReachTheLastPlace)
{
    EXPECT_EQ(tagHits(Placement::everySeconds(30), 92 * second, 2 * second, rate, 1),
              (Hits{30 * second, 60 * second, 90 * second}));
    EXPECT_EQ(tagHits(Placement::everySeconds(30), 92 * second - 1, 2 * second, rate, 1),
              (Hits{30 * second, 60 * second}));
    EXPECT_TRUE(tagHits(Placement::everySeconds(60), 62 * second - 1, 2 * second, rate, 1).empty());
    EXPECT_EQ(tagHits(Placement::everySeconds(60), 62 * second, 2 * second, rate, 1), (Hits{60 * second}));
}

TEST(TagHits, regularHitsAreNeverCloserThanTheTagIsLong)
{
    EXPECT_EQ(tagHits(Placement::everySeconds(30), 130 * second, 40 * second, rate, 1),
              (Hits{40 * second, 80 * second}));
    EXPECT_EQ(tagHits(Placement::everySeconds(-5), 4, 1, rate, 1), (Hits{1, 2, 3}));
}

TEST(TagHits, anIntervalBeyondAllFramesIsTheLargestThereCanBe)
{
    constexpr std::int64_t nearest = 9'223'372'036'854'774'784;
    EXPECT_EQ(tagHits(Placement::everySeconds(largest), largest, 1, rate, 1), (Hits{nearest}));
    EXPECT_EQ(tagHits(Placement::everySeconds(smallest), 4, 1, rate, 1), (Hits{1, 2, 3}));
    // Three of four are moved towards or beyond the end, where they stay.
    for (std::int64_t seed = 0; seed < 20; ++seed) {
        const Hits hits = tagHits(Placement::scattered(largest), largest, 1, rate, seed);
        ASSERT_EQ(hits.size(), 1u);
        EXPECT_GE(hits[0], nearest / 10 * 7 - 10);
        EXPECT_LE(hits[0], largest - 1);
        EXPECT_EQ(hits[0] >= nearest, Reference::jitterUnit(seed, 0) >= 0.5) << seed;
    }
}

TEST(TagHits, anIntervalIsTruncatedToWholeFrames)
{
    EXPECT_EQ(tagHits(Placement::everySeconds(3), 40, 1, 3.9, 1), (Hits{11, 22, 33}));
}

TEST(TagHits, hitsAcrossAreEvenlySpaced)
{
    EXPECT_EQ(tagHits(Placement::timesAcross(4), 1100, 99, rate, 1), (Hits{200, 400, 600, 800}));
    EXPECT_EQ(tagHits(Placement::timesAcross(1), 1100, 100, rate, 1), (Hits{500}));
    EXPECT_TRUE(tagHits(Placement::timesAcross(0), 1100, 100, rate, 1).empty());
    EXPECT_TRUE(tagHits(Placement::timesAcross(-4), 1100, 100, rate, 1).empty());
}

TEST(TagHits, withoutRoomForAllAcrossThereIsOneInTheMiddle)
{
    EXPECT_EQ(tagHits(Placement::timesAcross(8), 108, 100, rate, 1), (Hits{4}));
    EXPECT_EQ(tagHits(Placement::timesAcross(8), 109, 100, rate, 1), (Hits{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(tagHits(Placement::timesAcross(largest), 120, 100, rate, 1), (Hits{10}));
}

TEST(TagHits, scatteredHitsFollowTheGenerator)
{
    const std::int64_t interval = 60 * second;
    const std::int64_t room = 400 * second;
    for (const std::int64_t seed : {std::int64_t(0), std::int64_t(1), std::int64_t(-7), largest, smallest}) {
        Hits wanted;
        for (int step = 0; (step + 1) * interval <= room; ++step) {
            const auto jitter = std::int64_t((Reference::jitterUnit(seed, step) - 0.5) * double(interval) * 0.6);
            wanted.push_back(std::clamp((step + 1) * interval + jitter, std::int64_t(0), room));
        }
        std::sort(wanted.begin(), wanted.end());
        EXPECT_EQ(tagHits(Placement::scattered(60), room + 5 * second, 5 * second, rate, seed), wanted) << seed;
        EXPECT_EQ(wanted.size(), 6u);
    }
}

TEST(TagHits, aKnownSeedGivesKnownScatteredHits)
{
    EXPECT_EQ(tagHits(Placement::scattered(1), 5000, 10, 1000.0, 42), (Hits{836, 1948, 3078, 4108}));
}

TEST(TagHits, scatteredHitsStayWithinThirtyPerCentAndWithinTheTrack)
{
    const std::int64_t interval = 10 * second;
    bool touchesEnd = false;
    for (std::int64_t seed = 0; seed < 200; ++seed) {
        const Hits hits = tagHits(Placement::scattered(10), 101 * second, second, rate, seed);
        ASSERT_EQ(hits.size(), 10u);
        for (std::size_t index = 0; index < hits.size(); ++index) {
            const auto regular = std::int64_t(index + 1) * interval;
            EXPECT_LE(std::abs(hits[index] - regular), interval * 3 / 10);
            EXPECT_LE(hits[index], 100 * second);
        }
        touchesEnd = touchesEnd || hits.back() == 100 * second;
    }
    EXPECT_TRUE(touchesEnd);
}

TEST(TagHits, scatteredHitsAreAscendingAndComeAgainWithTheirSeed)
{
    const auto hits = tagHits(Placement::scattered(7), 300 * second, second, rate, 5);
    EXPECT_TRUE(std::is_sorted(hits.begin(), hits.end()));
    EXPECT_EQ(tagHits(Placement::scattered(7), 300 * second, second, rate, 5), hits);
    EXPECT_NE(tagHits(Placement::scattered(7), 300 * second, second, rate, 6), hits);
}

TEST(TagHits, scatteredHitsNeedRoomForAnInterval)
{
    EXPECT_TRUE(tagHits(Placement::scattered(60), 61 * second - 1, second, rate, 1).empty());
    EXPECT_EQ(tagHits(Placement::scattered(60), 61 * second, second, rate, 1).size(), 1u);
}
