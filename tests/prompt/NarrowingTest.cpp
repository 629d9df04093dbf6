#include "prompt/Prompt.h"
#include "tests/prompt/MadeCrate.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane::Prompt {
namespace {

using test::scene;

class NarrowingTest : public testing::Test
{
protected:
    NarrowingTest()
    {
        Scene first = scene(u"first"_s);
        Scene second = scene(u"second"_s);
        second.year = u"1991"_s;
        second.voices = {u"a choir"_s};
        second.moods = {u"warm"_s};
        second.bpm = {.first = 119, .last = 120};
        Scene third = second;
        third.id = u"third"_s;
        third.genres = {u"third genre"_s, u"first genre"_s};
        third.moods = {u"raw"_s};
        crate = Crate({first, second, third});
    }

    Crate crate{{}};
};

TEST_F(NarrowingTest, noLockLeavesEveryScene)
{
    const Narrowed pool = narrow(crate, {});
    EXPECT_EQ(pool.scenes, (QList<qsizetype>{0, 1, 2}));
    EXPECT_TRUE(pool.bends.isEmpty());
}

TEST_F(NarrowingTest, eachLockKeepsTheScenesThatSatisfyIt)
{
    EXPECT_EQ(narrow(crate, {.genre = u"first genre"_s}).scenes, (QList<qsizetype>{0, 2}));
    EXPECT_EQ(narrow(crate, {.mood = u"raw"_s}).scenes, (QList<qsizetype>{0, 2}));
    EXPECT_EQ(narrow(crate, {.era = u"1990s"_s}).scenes, (QList<qsizetype>{1, 2}));
    EXPECT_EQ(narrow(crate, {.voice = u"female voice"_s}).scenes, (QList<qsizetype>{0}));
    EXPECT_EQ(narrow(crate, {.tempo = u"120–140 BPM"_s}).scenes, (QList<qsizetype>{1, 2}));
    EXPECT_EQ(narrow(crate, {.tempo = u"90–120 BPM"_s}).scenes, (QList<qsizetype>{0, 1, 2}));
}

TEST_F(NarrowingTest, aGenreIsMatchedExactly)
{
    EXPECT_EQ(narrow(crate, {.genre = u"First genre"_s}).bends, (QStringList{u"genre"_s}));
    EXPECT_EQ(narrow(crate, {.genre = u"first"_s}).bends, (QStringList{u"genre"_s}));
}

TEST_F(NarrowingTest, aLaterLockGivesWayToAnEarlierOne)
{
    const Narrowed pool = narrow(crate, {.genre = u"second genre"_s,
                                         .mood = u"cold"_s,
                                         .era = u"1980s"_s,
                                         .voice = u"female voice"_s,
                                         .tempo = u"over 140 BPM"_s});
    EXPECT_EQ(pool.scenes, (QList<qsizetype>{1}));
    EXPECT_EQ(pool.bends, (QStringList{u"era"_s, u"voice"_s, u"mood"_s, u"tempo"_s}));
}

TEST_F(NarrowingTest, theRankIsGenreEraVoiceMoodTempo)
{
    EXPECT_EQ(narrow(crate, {.era = u"1980s"_s, .voice = u"several voices"_s}).bends, (QStringList{u"voice"_s}));
    EXPECT_EQ(narrow(crate, {.mood = u"warm"_s, .voice = u"female voice"_s}).bends, (QStringList{u"mood"_s}));
    EXPECT_EQ(narrow(crate, {.mood = u"cold"_s, .tempo = u"120–140 BPM"_s}).bends, (QStringList{u"tempo"_s}));
    EXPECT_EQ(narrow(crate, {.genre = u"second genre"_s, .era = u"1980s"_s}).bends, (QStringList{u"era"_s}));
}

TEST_F(NarrowingTest, aLockThatNobodySatisfiesLeavesTheWholeCrate)
{
    const Narrowed pool = narrow(crate, {.genre = u"zydeco"_s});
    EXPECT_EQ(pool.scenes.size(), 3);
    EXPECT_EQ(pool.bends, (QStringList{u"genre"_s}));
}

TEST(Candidates, areTheScenesOfTheTableThatTheLocksLeave)
{
    const auto [scenes, bends] = candidatesAndBends({.genre = u"grunge"_s, .era = u"1980s"_s});
    ASSERT_EQ(scenes.size(), 1);
    EXPECT_EQ(scenes.first().id, u"seattle-1991-grunge");
    EXPECT_EQ(bends, (QStringList{u"era"_s}));
    EXPECT_EQ(candidates({}).size(), 106);
}

} // namespace
} // namespace orvane::Prompt
