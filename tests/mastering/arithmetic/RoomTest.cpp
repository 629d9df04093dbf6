#include "mastering/arithmetic/Room.h"

#include <algorithm>
#include <gmock/gmock.h>

using orvane::GivingBack;
using orvane::largePage;

namespace {

constexpr std::size_t pageSamples = largePage / sizeof(double);

/// A channel of ones over several large pages. What has been given back reads as 0.
class GivingBackTest : public testing::Test
{
protected:
    /// The sample that the large page begins with; page 0 is the first that begins inside of the channel.
    std::size_t startOf(std::size_t page) const
    {
        const auto address = reinterpret_cast<std::uintptr_t>(channel_.data());
        const std::uintptr_t first = (address + largePage - 1) / largePage * largePage;
        return (first - address) / sizeof(double) + page * pageSamples;
    }

    void expectOnly(std::size_t first, std::size_t end) const
    {
        const auto isOne = [](double sample) { return sample == 1.0; };
        const auto begin = channel_.begin();
        const auto gone = begin + std::ptrdiff_t(first);
        const auto rest = begin + std::ptrdiff_t(end);
        EXPECT_TRUE(std::all_of(begin, gone, isOne));
        EXPECT_EQ(std::count(gone, rest, 0.0), rest - gone);
        EXPECT_TRUE(std::all_of(rest, channel_.end(), isOne));
    }

    std::vector<double> channel_ = std::vector<double>(5 * pageSamples, 1.0);
};

} // namespace

TEST_F(GivingBackTest, wholeLargePagesInFrontOfTheReaderGo)
{
    GivingBack going(channel_);
    going.before(startOf(1) - 1);
    expectOnly(0, 0);
    going.before(startOf(1));
    expectOnly(startOf(0), startOf(1));
    going.before(startOf(3) - 1);
    expectOnly(startOf(0), startOf(2));
    going.before(startOf(3) + 7);
    expectOnly(startOf(0), startOf(3));
}

TEST_F(GivingBackTest, whatIsGoneIsNotTouchedAgain)
{
    GivingBack going(channel_);
    going.before(startOf(2));
    std::fill_n(channel_.begin(), startOf(2), 1.0);
    going.before(startOf(1));
    going.before(startOf(2) + 1);
    expectOnly(0, 0);
    going.before(startOf(3));
    expectOnly(startOf(2), startOf(3));
}

TEST_F(GivingBackTest, theFirstSamplesStay)
{
    GivingBack going(channel_, startOf(1));
    going.before(startOf(3));
    expectOnly(startOf(1), startOf(3));
    std::fill(channel_.begin(), channel_.end(), 1.0);
    GivingBack oneMore(channel_, startOf(1) + 1);
    oneMore.before(startOf(3));
    expectOnly(startOf(2), startOf(3));
}

TEST_F(GivingBackTest, theLastSamplesStayWhereverALargePageBegins)
{
    GivingBack going(channel_);
    channel_.resize(startOf(2) + 63);
    going.allBut(64);
    expectOnly(startOf(0), startOf(1));
    channel_.resize(startOf(2) + 64, 1.0);
    going.allBut(64);
    expectOnly(startOf(0), startOf(2));
}

TEST_F(GivingBackTest, aChannelShorterThanWhatIsToStayStays)
{
    GivingBack going(channel_);
    channel_.resize(startOf(2));
    going.allBut(channel_.size() + 1);
    expectOnly(0, 0);
    going.before(channel_.size() + pageSamples);
    expectOnly(startOf(0), startOf(2));
}
