#include "tests/laboratory/Lab.h"

#include <QJsonArray>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::lab;

TEST(PromptVerb, rollsAsManyAsAskedForWithTheLocksKept)
{
    const QJsonArray results =
        lab({u"prompt"_s, u"--count"_s, u"5"_s, u"--genre"_s, u"grunge"_s, u"--era"_s, u"1980s"_s}).json.array();
    ASSERT_EQ(results.size(), 5);
    for (const QJsonValue& result : results) {
        EXPECT_EQ(result[u"locks"][u"genre"].toString(), u"grunge");
        EXPECT_EQ(result[u"locks"][u"era"].toString(), u"1990s");
        EXPECT_EQ(result[u"bent"].toArray(), (QJsonArray{u"era"_s}));
        EXPECT_FALSE(result[u"style"].toString().isEmpty());
        EXPECT_FALSE(result[u"idea"].toString().isEmpty());
    }
}

TEST(PromptVerb, everyOtherLockIsTaken)
{
    const QJsonValue result =
        lab({u"prompt"_s, u"--mood"_s, u"cathartic"_s, u"--voice"_s, u"male voice"_s, u"--tempo"_s, u"120–140 BPM"_s})
            .json.array()
            .first();
    EXPECT_EQ(result[u"locks"][u"mood"].toString(), u"cathartic");
    EXPECT_EQ(result[u"locks"][u"voice"].toString(), u"male voice");
    EXPECT_EQ(result[u"locks"][u"tempo"].toString(), u"120–140 BPM");
    EXPECT_TRUE(result[u"bent"].toArray().isEmpty());
}

TEST(PromptVerb, oneSeedIsOneOutcome)
{
    const QStringList seven{u"prompt"_s, u"--count"_s, u"3"_s, u"--seed"_s, u"7"_s};
    const QJsonDocument first = lab(seven).json;
    EXPECT_EQ(first.array().size(), 3);
    EXPECT_EQ(lab(seven).json, first);
    EXPECT_NE(lab({u"prompt"_s, u"--count"_s, u"3"_s, u"--seed"_s, u"8"_s}).json, first);
}

TEST(CrateVerb, printsTheTableWithItsFieldsAndTheTwoEndsOfEachTempoRange)
{
    const QJsonArray rows = lab({u"crate"_s}).json.array();
    ASSERT_EQ(rows.size(), 106);
    const QJsonObject first = rows.first().toObject();
    EXPECT_EQ(first[u"id"].toString(), u"chicago-jack-track-86");
    EXPECT_EQ(first[u"bpm"].toArray(), (QJsonArray{118, 125}));
    EXPECT_EQ(first.keys(), (QStringList{u"bpm"_s, u"details"_s, u"family"_s, u"genres"_s, u"id"_s, u"keys"_s,
                                         u"moods"_s, u"motions"_s, u"place"_s, u"subjects"_s, u"voices"_s, u"year"_s}));
}

TEST(CombinationsVerb, printsOneNumber)
{
    EXPECT_GT(lab({u"combinations"_s}).json[u"combinations"].toDouble(), 1e9);
}

TEST(PromptVerb, refusesWhatItDoesNotKnow)
{
    test::expectRefused({u"prompt"_s, u"grunge"_s}, lab({u"crate"_s, u"grunge"_s}).said.chopped(1));
    EXPECT_EQ(lab({u"prompt"_s, u"--seed"_s, u"x"_s}).exitCode, 1);
}

} // namespace
} // namespace orvane
