#include "mastering/arithmetic/Tag.h"

#include "mastering/arithmetic/Loudness.h"
#include "tests/mastering/arithmetic/Signals.h"

#include <cmath>
#include <gmock/gmock.h>

using namespace orvane;
using namespace orvane::test;
using Master::atLevel;
using Master::stamp;
using Master::withChannelCount;
using Hits = std::vector<std::int64_t>;

namespace {

constexpr double rate = 44100.0;

/// The factor that the definition gives for sample `k` of `length`.
double fade(std::size_t k, std::size_t length)
{
    return std::min(double(std::min(k, length - 1 - k)) / 220.0, 1.0);
}

} // namespace

TEST(TagChannels, tooFewAreRepeatedInTurnAndOfTooManyTheFirstStay)
{
    const Channels stereo{{1.0}, {2.0}};
    EXPECT_EQ(withChannelCount({{1.0}}, 2), (Channels{{1.0}, {1.0}}));
    EXPECT_EQ(withChannelCount(stereo, 5), (Channels{{1.0}, {2.0}, {1.0}, {2.0}, {1.0}}));
    EXPECT_EQ(withChannelCount(stereo, 1), (Channels{{1.0}}));
    EXPECT_EQ(withChannelCount(stereo, 0), (Channels{{1.0}}));
    EXPECT_EQ(withChannelCount(stereo, 2), stereo);
    EXPECT_EQ(withChannelCount({}, 2), Channels(2));
}

TEST(TagLevel, liesSoFarFromTheReference)
{
    const Channels tag = atLevel({tone(997.0, -3.0, 2.0, rate)}, -18.0, -10.0, rate);
    EXPECT_NEAR(Master::measure(tag, rate).integrated, -28.0, 1e-9);
}

TEST(TagLevel, staysWhereEitherLoudnessDoesNotExist)
{
    const Channels tag{tone(997.0, -3.0, 2.0, rate)};
    EXPECT_EQ(atLevel(tag, -18.0, Master::minusInfinity, rate), tag);
    const Channels shortTag{tone(997.0, -3.0, 0.3, rate)};
    EXPECT_EQ(atLevel(shortTag, -18.0, -10.0, rate), shortTag);
    EXPECT_EQ(atLevel({}, -18.0, -10.0, rate), Channels{});
}

TEST(Stamp, addsTheFadedTagToTheMusic)
{
    const Channels tag{noise(1000, 0.3)};
    const Channels music{noise(5000, 0.3, 1)};
    Channels stamped = music;
    stamp(stamped, tag, Hits{2000}, 0);
    for (std::size_t frame = 0; frame < 5000; ++frame) {
        const bool isUnder = frame >= 2000 && frame < 3000;
        const double added = isUnder ? tag[0][frame - 2000] * fade(frame - 2000, 1000) : 0.0;
        ASSERT_NEAR(stamped[0][frame], music[0][frame] + added, 1e-15) << frame;
    }
}

TEST(Stamp, theTagFadesOver220SamplesAtEitherEnd)
{
    const Channels tag{Samples(1000, 1.0)};
    Channels stamped{silence(1000)};
    stamp(stamped, tag, Hits{0}, 0);
    EXPECT_EQ(stamped[0][0], 0.0);
    EXPECT_EQ(stamped[0][999], 0.0);
    EXPECT_DOUBLE_EQ(stamped[0][110], 0.5);
    EXPECT_DOUBLE_EQ(stamped[0][889], 0.5);
    EXPECT_LT(stamped[0][219], 1.0);
    EXPECT_EQ(stamped[0][220], 1.0);
    EXPECT_EQ(stamped[0][779], 1.0);
    EXPECT_LT(stamped[0][780], 1.0);
}

TEST(Stamp, aTagShorterThanItsFadesNeverReachesFullLevel)
{
    Channels stamped{silence(100)};
    stamp(stamped, {Samples(101, 1.0)}, Hits{0}, 0);
    EXPECT_DOUBLE_EQ(stamped[0][50], 50.0 / 220.0);
}

TEST(Stamp, whatLiesOutsideTheBufferIsLeftOut)
{
    const Channels tag{Samples(1000, 1.0)};
    Channels whole{silence(5000)};
    const Hits hits{500, 1800, 4500};
    stamp(whole, tag, hits, 0);
    for (std::int64_t start = 0; start < 5000; start += 777) {
        const auto length = std::size_t(std::min<std::int64_t>(777, 5000 - start));
        Channels piece{silence(length)};
        stamp(piece, tag, hits, start);
        for (std::size_t frame = 0; frame < length; ++frame)
            ASSERT_EQ(piece[0][frame], whole[0][std::size_t(start) + frame]);
    }
}

TEST(Stamp, onlyThePartThatIsAskedForIsStamped)
{
    const Channels tag{Samples(1000, 1.0)};
    Channels whole{silence(1000)};
    stamp(whole, tag, Hits{0}, 0);
    Channels part{silence(1000)};
    stamp(part, 300, 600, tag, Hits{0}, 300);
    for (std::size_t frame = 0; frame < 1000; ++frame)
        ASSERT_EQ(part[0][frame], frame >= 300 && frame < 600 ? whole[0][frame] : 0.0) << frame;
    const Channels before = part;
    stamp(part, 600, 600, tag, Hits{0}, 600);
    EXPECT_EQ(part, before);
}

TEST(Stamp, overlappingHitsAddUp)
{
    const Channels tag{Samples(1000, 1.0)};
    Channels stamped{silence(3000)};
    stamp(stamped, tag, Hits{0, 500, 500}, 0);
    EXPECT_EQ(stamped[0][750], 3.0);
    EXPECT_EQ(stamped[0][1000], 2.0);
}

TEST(Stamp, channelsTakeTheTagsChannelsInTurn)
{
    const Channels tag{Samples(1000, 1.0), Samples(1000, 2.0)};
    Channels three{silence(1000), silence(1000), silence(1000)};
    stamp(three, tag, Hits{0}, 0);
    EXPECT_EQ(three[0][500], 1.0);
    EXPECT_EQ(three[1][500], 2.0);
    EXPECT_EQ(three[2][500], 1.0);
    Channels mono{silence(1000)};
    stamp(mono, tag, Hits{0}, 0);
    EXPECT_EQ(mono[0][500], 1.0);
}

TEST(Stamp, theFirstChannelsSayHowFarItReaches)
{
    const Channels tag{Samples(1000, 1.0), Samples(1500, 1.0), Samples(500, 1.0)};
    Channels channels{silence(2000), silence(3000), silence(700)};
    stamp(channels, tag, Hits{0}, 0);
    EXPECT_EQ(channels[1][999], 1.0);
    EXPECT_EQ(channels[1][1000], 0.0);
    EXPECT_EQ(channels[2][250], 1.0);
    EXPECT_EQ(channels[2][499], 0.0);
    stamp(channels, tag, Hits{1500}, 0);
    EXPECT_EQ(channels[1][1999], 1.0);
    EXPECT_EQ(channels[1][2000], 0.0);
}

TEST(Stamp, nothingHappensWhereThereIsNothing)
{
    Channels channels{Samples(10, 1.0)};
    const Channels before = channels;
    stamp(channels, {}, Hits{0}, 0);
    stamp(channels, {{}}, Hits{0}, 0);
    stamp(channels, {Samples(5, 1.0)}, Hits{}, 0);
    EXPECT_EQ(channels, before);
    Channels none;
    Channels empty{{}};
    stamp(none, {Samples(5, 1.0)}, Hits{0}, 0);
    stamp(empty, {Samples(5, 1.0)}, Hits{0}, 0);
    EXPECT_TRUE(none.empty());
    EXPECT_TRUE(empty.front().empty());
}
