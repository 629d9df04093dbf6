#include "prompt/Prompt.h"
#include "tests/prompt/MadeCrate.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane::Prompt {
namespace {

using test::scene;

TEST(Combinations, areEveryChoiceTimesEveryOther)
{
    Scene one = scene(u"one"_s);
    one.voices.append(u"a third"_s);
    // genres 2, voices 3, motions 2, keys 2, subjects 2, moods 2, ordered pairs of 3 details, 11 tempos, 28 forms
    EXPECT_EQ(combinations(Crate({one})), 2 * 3 * 2 * 2 * 2 * 2 * 6 * 11 * 28);
    EXPECT_EQ(combinations(Crate({one, one})), 2 * combinations(Crate({one})));
}

TEST(Combinations, aSingleDetailAndASingleTempoCountOnce)
{
    Scene one = scene(u"one"_s);
    one.details = {u"one drum"_s};
    one.bpm = {.first = 100, .last = 100};
    EXPECT_EQ(combinations(Crate({one})), 2 * 2 * 2 * 2 * 2 * 2 * 28);
}

TEST(Combinations, ofTheProgramsTableAreMoreThanABillion)
{
    EXPECT_GT(combinations(), 1'000'000'000);
    EXPECT_EQ(combinations(), combinations(crate()));
}

} // namespace
} // namespace orvane::Prompt
