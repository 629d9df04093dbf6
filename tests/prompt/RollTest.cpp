#include "prompt/Prompt.h"
#include "tests/prompt/MadeCrate.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane::Prompt {
namespace {

using test::scene;
using test::written;

const Crate two({scene(u"first"_s), scene(u"second"_s, u"rock"_s)});

TEST(Roll, aFractionOfZeroPicksTheFirstOfEverything)
{
    const Result result = roll(two, {}, written({0}));
    EXPECT_EQ(result.style,
              u"First genre from Old Street, 1986: a woman close to the mic, one drum, two horns. 100 BPM, "
              u"a long fade.");
    EXPECT_EQ(result.idea, u"A song about a bus.");
    EXPECT_TRUE(result.bent.isEmpty());
    EXPECT_EQ(result.locks, (Locks{.genre = u"first genre"_s,
                                   .mood = u"raw"_s,
                                   .era = u"1980s"_s,
                                   .voice = u"female voice"_s,
                                   .tempo = u"90–120 BPM"_s}));
}

TEST(Roll, aFractionOfExactlyOnePicksTheLastOfEverything)
{
    const Result result = roll(two, {}, written({1}));
    EXPECT_EQ(result.style, u"Second other, 1986, Old Street. A man far from it over old tape two horns. A sudden end. "
                            u"100 BPM, E minor.");
    EXPECT_EQ(result.idea, u"The song is about a train.");
}

TEST(Roll, theChoicesAreMadeInTheirOrder)
{
    // Scene, genre, mood, voice, motion, key, subject, both details, style form, idea form.
    const Result result = roll(two, {}, written({0, 0.5, 0, 0.5, 0, 0.5, 0, 0.4, 0.5, 0.8, 0.25}));
    EXPECT_EQ(result.style, u"Raw first other from Old Street, a cellar, 1986. Two horns, old tape, a man far from it. "
                            u"100 BPM, E minor.");
    EXPECT_EQ(result.idea, u"About a bus.");
}

TEST(Roll, aLockedGenreAndMoodTakeNoLuck)
{
    const Result result =
        roll(two, {.genre = u"second other"_s, .mood = u"cold"_s}, written({0, 0.5, 0, 0.5, 0, 0.4, 0.5, 0.8, 0.25}));
    EXPECT_EQ(result.style, u"Cold second other from Old Street, a cellar, 1986. Two horns, old tape, a man far from "
                            u"it. 100 BPM, E minor.");
}

TEST(Roll, aGenreThatNoSceneHoldsIsBentAndTheResultTellsTheOnePicked)
{
    const Result result = roll(two, {.genre = u"zydeco"_s}, written({0}));
    EXPECT_EQ(result.bent, (QSet<QString>{u"genre"_s}));
    EXPECT_EQ(result.locks.genre, u"first genre"_s);
}

TEST(Roll, aMoodThatTheGenresSceneLacksIsPickedFromTheScene)
{
    const Result result = roll(two, {.genre = u"first genre"_s, .mood = u"giddy"_s}, written({0}));
    EXPECT_EQ(result.bent, (QSet<QString>{u"mood"_s}));
    EXPECT_EQ(result.locks.mood, u"raw"_s);
}

TEST(Roll, aLockedKindOfVoiceIsPickedFromThoseOfThatKind)
{
    for (double fraction : {0.0, 1.0}) {
        EXPECT_EQ(roll(two, {.voice = u"male voice"_s}, written({fraction})).locks.voice, u"male voice"_s);
        EXPECT_EQ(roll(two, {.voice = u"female voice"_s}, written({fraction})).locks.voice, u"female voice"_s);
    }
}

TEST(Roll, aBentKindOfVoiceIsPickedFromAll)
{
    const Result result = roll(two, {.voice = u"no voice"_s}, written({1}));
    EXPECT_EQ(result.bent, (QSet<QString>{u"voice"_s}));
    EXPECT_EQ(result.locks.voice, u"male voice"_s);
}

class TempoRollTest : public testing::Test
{
protected:
    static Crate crate(int first, int last)
    {
        Scene one = scene(u"one"_s);
        one.bpm = {.first = first, .last = last};
        return Crate({one});
    }
};

TEST_F(TempoRollTest, aRangeThatOnlyTouchesTheBandGivesATempoInIt)
{
    const Crate touching = crate(100, 121);
    const Result low = roll(touching, {.tempo = u"120–140 BPM"_s}, written({0}));
    EXPECT_TRUE(low.style.contains(u"120 BPM"_s)) << low.style.toStdString();
    const Result high = roll(touching, {.tempo = u"120–140 BPM"_s}, written({1}));
    EXPECT_TRUE(high.style.contains(u"121 BPM"_s)) << high.style.toStdString();
    EXPECT_TRUE(low.bent.isEmpty());
    EXPECT_EQ(low.locks.tempo, u"120–140 BPM"_s);
}

TEST_F(TempoRollTest, theLowestTempoOfARangeCanBeTheOneInTheBand)
{
    const Result result = roll(crate(119, 121), {.tempo = u"90–120 BPM"_s}, written({1}));
    EXPECT_TRUE(result.style.contains(u"119 BPM"_s)) << result.style.toStdString();
}

TEST_F(TempoRollTest, aBentTempoIsDrawnFromTheWholeRange)
{
    Chance chance = written({0});
    chance.integer = [](int least, int most) {
        EXPECT_EQ(least, 100);
        EXPECT_EQ(most, 121);
        return most;
    };
    const Result result = roll(crate(100, 121), {.tempo = u"over 140 BPM"_s}, chance);
    EXPECT_EQ(result.bent, (QSet<QString>{u"tempo"_s}));
    EXPECT_TRUE(result.style.contains(u"121 BPM"_s));
    EXPECT_EQ(result.locks.tempo, u"120–140 BPM"_s);
}

TEST(Roll, familiesToAvoidAreLeftOutWhileOthersAreLeft)
{
    EXPECT_EQ(roll(two, {}, written({0}), {u"house"_s}).locks.genre, u"second genre"_s);
    EXPECT_EQ(roll(two, {}, written({0}), {u"house"_s, u"rock"_s}).locks.genre, u"first genre"_s);
}

TEST(Roll, withNoSceneThereIsNoPrompt)
{
    const Locks locks{.genre = u"house"_s};
    const Result result = roll(Crate({}), locks, written({0}));
    EXPECT_EQ(result, (Result{.locks = locks}));
    EXPECT_EQ(result.full(), QString());
}

TEST(Roll, aSceneWithOneDetailHasNoSecond)
{
    Scene bare = scene(u"bare"_s);
    bare.details = {u"one drum"_s, u"one drum"_s};
    const Result result = roll(Crate({bare}), {}, written({0}));
    EXPECT_EQ(result.style, u"Bare genre from Old Street, 1986: a woman close to the mic, one drum, . 100 BPM, a long "
                            u"fade.");
}

TEST(Roll, emptyListsGiveAbsentLocksAndNoIdea)
{
    Scene bare = scene(u"bare"_s);
    bare.genres.clear();
    bare.moods.clear();
    bare.voices.clear();
    bare.subjects.clear();
    const Result result = roll(Crate({bare}), {}, written({0}));
    EXPECT_EQ(result.idea, QString());
    EXPECT_EQ(result.full(), result.style);
    EXPECT_EQ(result.locks, (Locks{.era = u"1980s"_s, .tempo = u"90–120 BPM"_s}));
}

TEST(Roll, theWholePromptHasTheIdeaAsAParagraphOfItsOwn)
{
    const Result result = roll(two, {}, written({0}));
    EXPECT_EQ(result.full(), result.style + u"\n\n"_s + result.idea);
}

TEST(Roll, resultsCanBeKeysOfASet)
{
    const Result one = roll(two, {}, written({0}));
    const Result other = roll(two, {}, written({1}));
    EXPECT_EQ((QSet<Result>{one, other, one}).size(), 2);
    EXPECT_EQ((QSet<Locks>{one.locks, other.locks, one.locks}).size(), 2);
}

TEST(Make, drawsTheTempoFromTheSystemAndAllElseFromTheGivenFraction)
{
    QSet<QString> styles;
    for (int time = 0; time < 64; ++time)
        styles.insert(make({.genre = u"grunge"_s}, [] { return 0.0; }).style);
    // 55 tempos in 64 draws: one and the same each time would be a generator that does not draw.
    EXPECT_GT(styles.size(), 10);
    for (const QString& style : std::as_const(styles))
        EXPECT_TRUE(
            style.startsWith(u"Grunge from a low-ceilinged studio north of downtown Seattle, 1991: a male voice"_s));
}

TEST(SystemChance, staysWithinItsEnds)
{
    const Chance chance = systemChance();
    QSet<int> seen;
    for (int time = 0; time < 1000; ++time) {
        const double fraction = chance.fraction();
        EXPECT_TRUE(fraction >= 0 && fraction <= 1);
        seen.insert(chance.integer(3, 5));
    }
    EXPECT_EQ(seen, (QSet<int>{3, 4, 5}));
}

} // namespace
} // namespace orvane::Prompt
