#include "suno/TimeLeft.h"

#include <gtest/gtest.h>

namespace orvane::test {
namespace {

using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;
using Work = TimeLeft::Work;

void doTimes(TimeLeft& left, int times, Work work, std::chrono::milliseconds took)
{
    for (int item = 0; item < times; ++item)
        left.done(work, took);
}

TEST(TimeLeft, nothingIsSaidBeforeTheThirdTrack)
{
    TimeLeft left(10, 0);
    EXPECT_EQ(left.remaining(), std::nullopt);
    doTimes(left, 2, Work::download, 1s);
    EXPECT_EQ(left.remaining(), std::nullopt);
    left.done(Work::download, 1s);
    EXPECT_EQ(left.remaining(), 7s);
}

TEST(TimeLeft, isTheMeanOfWhatWasMeasuredTimesWhatRemains)
{
    TimeLeft left(5, 0);
    left.done(Work::download, 1s);
    left.done(Work::download, 2s);
    left.done(Work::download, 6s);
    EXPECT_EQ(left.remaining(), 6s);
}

TEST(TimeLeft, tracksThatAreThereAlreadyDoNotMakeTheNewOnesLookQuick)
{
    TimeLeft left(10, 100);
    doTimes(left, 100, Work::skip, 1ms);
    EXPECT_EQ(left.remaining(), std::nullopt);
    doTimes(left, 3, Work::download, 2s);
    EXPECT_EQ(left.remaining(), 14s);
}

TEST(TimeLeft, tracksThatAreThereAlreadyCountAtTheirOwnRate)
{
    TimeLeft left(4, 10);
    doTimes(left, 3, Work::download, 2s);
    doTimes(left, 2, Work::skip, 500ms);
    EXPECT_EQ(left.remaining(), 2s + 8 * 500ms);
}

TEST(TimeLeft, aBatchOfTracksThatAreAllThereNeedsNoDownloadMeasured)
{
    TimeLeft left(0, 5);
    doTimes(left, 3, Work::skip, 10ms);
    EXPECT_EQ(left.remaining(), 20ms);
}

TEST(TimeLeft, followsARateThatChanges)
{
    TimeLeft left(100, 0);
    doTimes(left, 30, Work::download, 1s);
    doTimes(left, 20, Work::download, 4s);
    EXPECT_EQ(left.remaining(), 50 * 4s);
}

TEST(TimeLeft, isZeroAtTheEndAndStaysThere)
{
    TimeLeft left(3, 0);
    doTimes(left, 3, Work::download, 1s);
    EXPECT_EQ(left.remaining(), 0s);
    left.done(Work::download, 1s);
    EXPECT_EQ(left.remaining(), 0s);
}

TEST(TimeLeft, aWeekOfWorkDoesNotOverflow)
{
    TimeLeft left(50'000, 0);
    doTimes(left, 20, Work::download, 1h);
    EXPECT_EQ(left.remaining(), 49'980h);
}

TEST(TimeLeftText, isAsRoughAsAnEstimateIs)
{
    EXPECT_EQ(timeLeftText(0ms), u"less than a minute left"_s);
    EXPECT_EQ(timeLeftText(29'999ms), u"less than a minute left"_s);
    EXPECT_EQ(timeLeftText(30s), u"about 1 min left"_s);
    EXPECT_EQ(timeLeftText(4min + 29s), u"about 4 min left"_s);
    EXPECT_EQ(timeLeftText(4min + 30s), u"about 5 min left"_s);
    EXPECT_EQ(timeLeftText(59min + 29s), u"about 59 min left"_s);
    EXPECT_EQ(timeLeftText(59min + 30s), u"about 1 h left"_s);
    EXPECT_EQ(timeLeftText(62min), u"about 1 h left"_s);
    EXPECT_EQ(timeLeftText(63min), u"about 1 h 5 min left"_s);
    EXPECT_EQ(timeLeftText(2h + 10min), u"about 2 h 10 min left"_s);
    EXPECT_EQ(timeLeftText(118min), u"about 2 h left"_s);
}

} // namespace
} // namespace orvane::test
