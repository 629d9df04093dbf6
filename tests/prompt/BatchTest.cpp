#include "prompt/Prompt.h"
#include "tests/prompt/MadeCrate.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane::Prompt {
namespace {

using test::scene;
using test::written;

/// Counts how often luck was asked for a whole number, which is once for each roll.
Chance counting(int& rolls, Chance chance)
{
    const auto integer = chance.integer;
    chance.integer = [&rolls, integer](int least, int most) {
        ++rolls;
        return integer(least, most);
    };
    return chance;
}

TEST(Batch, holdsAsManyDifferentResultsAsAskedFor)
{
    const QList<Result> results = batch(20, {});
    ASSERT_EQ(results.size(), 20);
    QSet<QString> texts;
    for (const Result& result : results)
        texts.insert(result.full());
    EXPECT_EQ(texts.size(), 20);
}

TEST(Batch, givesUpAfterFourteenAttemptsForEach)
{
    int rolls = 0;
    const QList<Result> results = batch(Crate({scene(u"one"_s)}), 3, {}, counting(rolls, written({0})));
    EXPECT_EQ(results.size(), 1);
    EXPECT_EQ(rolls, 42);
}

TEST(Batch, stopsAsSoonAsItIsFull)
{
    int rolls = 0;
    EXPECT_EQ(batch(1, {}, counting(rolls, systemChance())).size(), 1);
    EXPECT_EQ(rolls, 1);
}

TEST(Batch, avoidsTheFamiliesOfTheLastTwoKept)
{
    const Crate three({scene(u"a"_s, u"house"_s), scene(u"b"_s, u"rock"_s), scene(u"c"_s, u"jazz"_s)});
    Chance chance = written({0});
    int time = 0;
    // The first of each list; another tempo for each roll keeps the results apart.
    chance.integer = [&time](int, int) { return 100 + time++; };
    QStringList genres;
    for (const Result& result : batch(three, 7, {}, chance))
        genres.append(*result.locks.genre);
    EXPECT_EQ(genres, (QStringList{u"a genre"_s, u"b genre"_s, u"c genre"_s, u"a genre"_s, u"b genre"_s, u"c genre"_s,
                                   u"a genre"_s}));
}

TEST(Batch, aDiscardedResultDoesNotCountAsRecent)
{
    const Crate crate({scene(u"a"_s, u"house"_s), scene(u"b"_s, u"rock"_s), scene(u"c"_s, u"jazz"_s)});
    // With one and the same luck: a, b, c, then a again, which is discarded for ever.
    const QList<Result> results = batch(crate, 5, {}, written({0}));
    EXPECT_EQ(results.size(), 3);
}

TEST(Batch, endsAtAnEmptyRoll)
{
    EXPECT_TRUE(batch(Crate({}), 5, {}, written({0})).isEmpty());
}

TEST(Batch, ofNoneIsEmpty)
{
    EXPECT_TRUE(batch(0, {}).isEmpty());
    EXPECT_TRUE(batch(-1, {}).isEmpty());
}

} // namespace
} // namespace orvane::Prompt
