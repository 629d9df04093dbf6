#include "automation/Stage.h"

#include "automation/RunChoices.h"
#include "automation/RunSummary.h"
#include "trackfiles/namer/NameRules.h"

#include <gmock/gmock.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

QMap<Stage, StageState> states(const QList<StageState>& inOrder)
{
    QMap<Stage, StageState> outcomes;
    for (int index = 0; index < static_cast<int>(inOrder.size()); ++index)
        outcomes.insert(stageOrder.at(static_cast<std::size_t>(index)), inOrder.at(index));
    return outcomes;
}

const StageState done = StageState::done(u"52 tracks"_s);
const StageState failed = StageState::failed(u"no"_s);
const StageState off = StageState::skipped(u"turned off"_s);

TEST(StageOrder, isSixStagesByTheirNames)
{
    QStringList names;
    for (const Stage stage : stageOrder)
        names.append(nameOf(stage));
    EXPECT_EQ(names, (QStringList{u"Read the library"_s, u"Download assets"_s, u"Rename to your scheme"_s,
                                  u"Write tags"_s, u"Master audio"_s, u"Render videos"_s}));
}

TEST(StageOrder, theLastFourMayBeLeftOut)
{
    QList<bool> optional;
    for (const Stage stage : stageOrder)
        optional.append(isOptional(stage));
    EXPECT_EQ(optional, (QList<bool>{false, false, true, true, true, true}));
}

TEST(StageCaption, isTheNameAndTheNote)
{
    EXPECT_EQ(captionOf(Stage::read, done), u"Read the library — 52 tracks"_s);
    EXPECT_EQ(captionOf(Stage::video, off), u"Render videos — turned off"_s);
}

TEST(StageCaption, hasWordsOfItsOwnForWhatHasNoNote)
{
    EXPECT_EQ(captionOf(Stage::tag, StageState::running()), u"Write tags — running…"_s);
    EXPECT_EQ(captionOf(Stage::tag, StageState::waiting()), u"Write tags — waiting"_s);
}

TEST(StepsProgress, countsTheStageUnlessItWaits)
{
    EXPECT_DOUBLE_EQ(stepsProgress(Stage::read, StageState::waiting()), 0);
    EXPECT_DOUBLE_EQ(stepsProgress(Stage::read, StageState::running()), 1.0 / 6);
    EXPECT_DOUBLE_EQ(stepsProgress(Stage::master, failed), 5.0 / 6);
    EXPECT_DOUBLE_EQ(stepsProgress(Stage::video, StageState::waiting()), 5.0 / 6);
    EXPECT_DOUBLE_EQ(stepsProgress(Stage::video, off), 1);
}

TEST(RunSummaryText, sixStagesDoneAreNamedAlone)
{
    const RunSummary summary = summaryOf(states({done, done, done, done, done, done}));
    EXPECT_EQ(summary.text(), u"6 done"_s);
    EXPECT_EQ(summary.sentence(), u"Finished — 6 done."_s);
    EXPECT_TRUE(summary.isSuccess());
    EXPECT_EQ(summary.bar(), 1);
    EXPECT_EQ(summary.steps(), 1);
}

TEST(RunSummaryText, sixStagesDoneOrSkippedAreASuccess)
{
    const RunSummary summary = summaryOf(states({off, off, done, done, off, off}));
    EXPECT_EQ(summary.sentence(), u"Finished — 2 done, 4 switched off."_s);
    EXPECT_TRUE(summary.isSuccess());
}

TEST(RunSummaryText, oneStageOffOrNotReachedIsTold)
{
    EXPECT_EQ(summaryOf(states({done, done, done, done, done, off})).text(), u"5 done, 1 switched off"_s);
    EXPECT_EQ(summaryOf(states({done, done, done, done, done})).text(), u"5 done, 1 not reached"_s);
}

TEST(RunSummaryText, oneStageFailedIsNone)
{
    const RunSummary summary = summaryOf(states({done, done, failed, done, off, off}));
    EXPECT_EQ(summary.sentence(), u"Stopped — 3 done, 2 switched off, 1 failed."_s);
    EXPECT_EQ(summary.bar(), 0);
    EXPECT_EQ(summary.steps(), 1);
}

TEST(RunSummaryText, whatWasNotReachedIsTold)
{
    const RunSummary summary = summaryOf(states({failed}));
    EXPECT_EQ(summary.sentence(), u"Stopped — 0 done, 1 failed, 5 not reached."_s);
    EXPECT_DOUBLE_EQ(summary.steps(), 1.0 / 6);
}

TEST(RunSummaryText, aStageThatOnlyRunsOrWaitsWasNotReached)
{
    const RunSummary summary = summaryOf(states({done, StageState::running(), StageState::waiting()}));
    EXPECT_EQ(summary.text(), u"1 done, 5 not reached"_s);
}

TEST(RunSummaryText, anEmptyRunReachedNothing)
{
    EXPECT_EQ(summaryOf({}).text(), u"0 done, 6 not reached"_s);
}

TEST(RunSourceNote, tellsWhatTheSourceMeans)
{
    EXPECT_EQ(noteOf(RunSource::download), u"Reads your Suno library and downloads it first, then runs the ticked "
                                           "stages over everything it saved."_s);
    EXPECT_EQ(noteOf(RunSource::folder), u"Runs the ticked stages over the tracks already in your folder. Nothing is "
                                         "downloaded and nothing is fetched from Suno."_s);
    EXPECT_EQ(noteOf(RunSource::selection),
              u"Runs the ticked stages over the track selected in Files. Nothing is downloaded."_s);
}

TEST(RunSourceLabel, isThePickersText)
{
    EXPECT_EQ(labelOf(RunSource::download), u"Suno library"_s);
    EXPECT_EQ(labelOf(RunSource::folder), u"This folder"_s);
    EXPECT_EQ(labelOf(RunSource::selection), u"Selected track"_s);
}

TEST(ChosenPattern, isTheOneAtThePickersPlace)
{
    EXPECT_EQ(patternOf({.patternIndex = 0}), u"clean"_s);
    EXPECT_EQ(patternOf({.patternIndex = 1}), u"numbered"_s);
    EXPECT_EQ(patternOf({.patternIndex = 12}), u"orchestral"_s);
}

TEST(ChosenPattern, isCleanOutsideOfThePicker)
{
    EXPECT_EQ(patternOf({.patternIndex = -1}), u"clean"_s);
    EXPECT_EQ(patternOf({.patternIndex = static_cast<int>(TrackNamer::patterns().size())}), u"clean"_s);
}

TEST(ChosenTarget, isTheOneAtThePickersPlaces)
{
    const MasteringTarget target = targetOf({.platformIndex = 2, .formatIndex = 4});
    EXPECT_EQ(target.platform.name, u"Apple Music"_s);
    EXPECT_EQ(target.format, Master::Format::mp3);
}

TEST(ChosenTarget, isTheFirstOutsideOfThePickers)
{
    const MasteringTarget target = targetOf({.platformIndex = 99, .formatIndex = -1});
    EXPECT_EQ(target.platform, Master::platforms()[0]);
    EXPECT_EQ(target.format, Master::Format::wav);
}

} // namespace
} // namespace orvane::test
