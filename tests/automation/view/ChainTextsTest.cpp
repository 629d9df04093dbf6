#include "automation/view/ChainTexts.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane::test {
namespace {

using ChainTexts::Facts;
using ChainTexts::shareOf;
using ChainTexts::summaryOf;

Facts factsFor(RunSource source)
{
    Facts facts;
    facts.choices.source = source;
    facts.target = targetOf(facts.choices);
    return facts;
}

TEST(ChainTexts, theReadIsToldBySourceAndWorkspace)
{
    Facts facts = factsFor(RunSource::download);
    EXPECT_EQ(summaryOf(Stage::read, facts), u"whole library"_s);
    facts.config.workspace = u"abc"_s;
    EXPECT_EQ(summaryOf(Stage::read, facts), u"one workspace"_s);
    EXPECT_EQ(summaryOf(Stage::read, factsFor(RunSource::folder)), u"in place"_s);
}

TEST(ChainTexts, aSelectionIsInPlaceOnlyWhereThereIsOne)
{
    Facts facts = factsFor(RunSource::selection);
    EXPECT_EQ(summaryOf(Stage::read, facts), u"nothing selected"_s);
    facts.hasSelection = true;
    EXPECT_EQ(summaryOf(Stage::read, facts), u"in place"_s);
}

TEST(ChainTexts, theDownloadIsToldByTheTickedAssets)
{
    Facts facts = factsFor(RunSource::download);
    EXPECT_EQ(summaryOf(Stage::download, facts), u"Nothing ticked in the Downloader yet."_s);
    facts.config.assets = {Asset::lyrics, Asset::audio};
    EXPECT_EQ(summaryOf(Stage::download, facts), u"audio, lyrics"_s);
}

TEST(ChainTexts, theOtherStagesTellTheirSettings)
{
    Facts facts = factsFor(RunSource::download);
    EXPECT_FALSE(summaryOf(Stage::rename, facts).isEmpty());
    const QString first = summaryOf(Stage::rename, facts);
    facts.choices.patternIndex = 1;
    EXPECT_NE(summaryOf(Stage::rename, facts), first);
    EXPECT_EQ(summaryOf(Stage::tag, facts), u"ID3"_s);
    EXPECT_EQ(summaryOf(Stage::master, facts), u"Target -14 LUFS, WAV 24-bit"_s);
    EXPECT_EQ(summaryOf(Stage::video, facts), u"fast, Videos/"_s);
    facts.choices.renderer = VideoRenderer::website;
    EXPECT_EQ(summaryOf(Stage::video, facts), u"website, Videos/"_s);
}

TEST(ChainTexts, aMasterWithoutATargetTellsItsFolder)
{
    Facts facts = factsFor(RunSource::download);
    facts.target = {};
    EXPECT_EQ(summaryOf(Stage::master, facts), u"Mastered"_s);
}

TEST(ChainTexts, whatIsMissingIsCounted)
{
    EXPECT_EQ(ChainTexts::setupText(0), QString());
    EXPECT_EQ(ChainTexts::setupText(1), u"One thing to set up first."_s);
    EXPECT_EQ(ChainTexts::setupText(3), u"3 things to set up first."_s);
}

TEST(ChainTexts, eachStageHasAShortName)
{
    QStringList names;
    for (const Stage stage : stageOrder)
        names.append(ChainTexts::shortNameOf(stage));
    EXPECT_EQ(names, (QStringList{u"Library"_s, u"Download"_s, u"Rename"_s, u"Tags"_s, u"Master"_s, u"Video"_s}));
}

TEST(ChainTexts, onlyTickedStagesCountAsTicked)
{
    const RunChoices choices{.rename = true, .tag = false, .master = true};
    EXPECT_TRUE(ChainTexts::isTicked(Stage::read, choices));
    EXPECT_TRUE(ChainTexts::isTicked(Stage::download, choices));
    EXPECT_TRUE(ChainTexts::isTicked(Stage::rename, choices));
    EXPECT_FALSE(ChainTexts::isTicked(Stage::tag, choices));
    EXPECT_TRUE(ChainTexts::isTicked(Stage::master, choices));
    EXPECT_FALSE(ChainTexts::isTicked(Stage::video, choices));
    EXPECT_TRUE(ChainTexts::isTicked(Stage::video, {.video = true}));
}

TEST(ChainTexts, theShareOfARunGrowsFromNothingToAll)
{
    double before = -1;
    for (const Stage stage : stageOrder) {
        const RunProgress half{.stage = stage, .done = 1, .count = 2};
        for (const double share : {shareOf(stage, StageState::running()), shareOf(half)}) {
            EXPECT_GT(share, before);
            before = share;
        }
    }
    EXPECT_EQ(shareOf(Stage::read, StageState::waiting()), 0.0);
    EXPECT_EQ(shareOf(Stage::video, StageState::skipped({})), 1.0);
}

} // namespace
} // namespace orvane::test
