#include "automation/RunPlan.h"

#include <gmock/gmock.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

PlanFacts facts(RunSource source, std::optional<int> tracks = {}, std::optional<int> taggable = {})
{
    return {.choices = {.source = source, .rename = true, .tag = true, .master = true},
            .config = {.workspace = {},
                       .assets = {Asset::audio, Asset::lyrics},
                       .destination = QUrl::fromLocalFile(u"/music/Orvane"_s),
                       .token = {}},
            .pattern = u"numbered"_s,
            .target = targetOf({}),
            .tracks = tracks,
            .taggable = taggable};
}

TEST(PlanText, ofALibraryTellsOfEveryTrack)
{
    EXPECT_EQ(planText(facts(RunSource::download)),
              u"Read the library — the whole library\n"
              "Download assets — audio, lyrics of every track into Orvane, what is there already stays\n"
              "Rename to your scheme — every track, formatted as numbered, with a Tracklist.txt\n"
              "Write tags — every track with an MP3\n"
              "Master audio — every track for Spotify at -14 LUFS as WAV 24-bit, into Mastered\n"
              "Render videos — turned off"_s);
}

TEST(PlanText, tellsWhoRendersTheVideos)
{
    PlanFacts known = facts(RunSource::folder, 12, 11);
    known.choices.video = true;
    EXPECT_EQ(planText(known).section(u'\n', 5),
              u"Render videos — 12 tracks with the app's own engine, into Videos, what is there already stays"_s);
    known.choices.renderer = VideoRenderer::website;
    EXPECT_EQ(planText(known).section(u'\n', 5),
              u"Render videos — 12 tracks with the website, into Videos, what is there already stays"_s);
}

TEST(PlanText, ofAWorkspaceSaysSo)
{
    PlanFacts known = facts(RunSource::download);
    known.config.workspace = u"some"_s;
    EXPECT_EQ(planText(known).section(u'\n', 0, 0), u"Read the library — one workspace"_s);
}

TEST(PlanText, ofAFolderCountsItsTracks)
{
    EXPECT_EQ(planText(facts(RunSource::folder, 12, 11)),
              u"Read the library — not needed, uses the files in Orvane\n"
              "Download assets — nothing, 12 tracks already here\n"
              "Rename to your scheme — 12 tracks, formatted as numbered, with a Tracklist.txt\n"
              "Write tags — 11 tracks with an MP3\n"
              "Master audio — 12 tracks for Spotify at -14 LUFS as WAV 24-bit, into Mastered\n"
              "Render videos — turned off"_s);
}

TEST(PlanText, countsOneTrackAsOne)
{
    EXPECT_EQ(planText(facts(RunSource::selection, 1, 1)),
              u"Read the library — not needed, uses the files in Orvane\n"
              "Download assets — nothing, 1 track already here\n"
              "Rename to your scheme — 1 track, formatted as numbered, with a Tracklist.txt\n"
              "Write tags — 1 track with an MP3\n"
              "Master audio — 1 track for Spotify at -14 LUFS as WAV 24-bit, into Mastered\n"
              "Render videos — turned off"_s);
}

TEST(PlanText, ofAnEmptyFolderHasNothingToWorkOn)
{
    EXPECT_EQ(planText(facts(RunSource::folder, 0, 0)), u"Read the library — not needed, uses the files in Orvane\n"
                                                        "Download assets — nothing, 0 tracks already here\n"
                                                        "Rename to your scheme — nothing to work on\n"
                                                        "Write tags — nothing to work on\n"
                                                        "Master audio — nothing to work on\n"
                                                        "Render videos — turned off"_s);
}

TEST(PlanText, tellsOfWhatIsTurnedOff)
{
    PlanFacts known = facts(RunSource::folder, 3, 3);
    known.choices.rename = false;
    known.choices.tag = false;
    known.choices.master = false;
    EXPECT_EQ(planText(known).section(u'\n', 2), u"Rename to your scheme — turned off\n"
                                                 "Write tags — turned off\n"
                                                 "Master audio — turned off\n"
                                                 "Render videos — turned off"_s);
}

} // namespace
} // namespace orvane::test
