#include "automation/SiteVisualizer.h"
#include "main/App/AppInfo.h"
#include "tests/automation/AutomationFixture.h"
#include "video/VideoEngine.h"

#include <QDir>
#include <QProcess>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class VideoStageTest : public AutomationFixture
{
protected:
    VideoStageTest() { choices = {.video = true}; }

    /// A run over the folder with recordings of these names.
    void useFolder(const QStringList& names)
    {
        choices.source = RunSource::folder;
        for (const QString& name : names)
            write(name, recording());
    }

    QStringList videos() const { return files(u"Videos"_s); }

    /// Stops the run when the line comes.
    void stopAt(const QString& stopLine)
    {
        onLine = [this, stopLine](const QString& line) {
            if (line == stopLine)
                run().stop();
        };
    }

    QStringList labels() const
    {
        QStringList told;
        for (const RunProgress& each : progress)
            told.append(each.label);
        return told;
    }
};

/// "width x height of picture, channels of sound" as ffprobe tells it.
QString shapeOf(const QString& path)
{
    QProcess ffprobe;
    ffprobe.start(u"ffprobe"_s, {u"-v"_s, u"error"_s, u"-show_entries"_s, u"stream=width,height,channels"_s, u"-of"_s,
                                 u"csv=p=0"_s, path});
    EXPECT_TRUE(ffprobe.waitForFinished());
    return QString::fromUtf8(ffprobe.readAllStandardOutput()).simplified();
}

TEST_F(VideoStageTest, aVideoIsRenderedForEachTrack)
{
    useFolder({u"Lake.mp3"_s, u"Ocean.mp3"_s});
    runToTheEnd();
    EXPECT_EQ(logged(), (QStringList{u"info: Rendering with the app's own engine at 9:16."_s,
                                     u"info: 2 video(s) to render — about 55s."_s,
                                     u"info: You can minimise the window."_s, u"success: Rendered Lake"_s,
                                     u"success: Rendered Ocean"_s, u"success: Finished — 1 done, 5 switched off."_s}));
    EXPECT_EQ(outcome(Stage::video), StageState::done(u"2 video(s) rendered"_s));
    EXPECT_EQ(videos(), (QStringList{u"Lake.mp4"_s, u"Ocean.mp4"_s}));
    EXPECT_EQ(shapeOf(path(u"Videos/Lake.mp4"_s)), u"1080,1920 2");
}

TEST_F(VideoStageTest, theLabelTellsTrackAndPerCent)
{
    useFolder({u"Lake.mp3"_s, u"Ocean.mp3"_s});
    runToTheEnd();
    EXPECT_EQ(labels().first(), u"video 1 of 2 — Lake — 0%"_s);
    EXPECT_THAT(labels(), testing::IsSupersetOf({u"video 1 of 2 — Lake — 50%"_s, u"video 1 of 2 — Lake — 100%"_s,
                                                 u"video 2 of 2 — Ocean — 0%"_s}));
    const auto half = std::ranges::find(progress, u"video 1 of 2 — Lake — 50%"_s, &RunProgress::label);
    ASSERT_NE(half, progress.end());
    EXPECT_DOUBLE_EQ(half->fraction(), 0.25);
}

TEST_F(VideoStageTest, thePillNamesTheProductsSiteAlsoWhereAServiceStandsInForIt)
{
    useFolder({u"Lake.mp3"_s});
    runToTheEnd();
    const auto filmed = [this](const QString& site) {
        VideoEngine engine(site);
        const VideoWork::Order order{.audio = path(u"Lake.mp3"_s),
                                     .artwork = {},
                                     .title = u"Lake"_s,
                                     .subtitle = u"Orvane"_s,
                                     .look = {},
                                     .output = path(u"expected.mp4"_s)};
        EXPECT_EQ(VideoWork::render(engine, order), QString());
        return read(u"expected.mp4"_s);
    };
    const QByteArray video = read(u"Videos/Lake.mp4"_s);
    EXPECT_TRUE(video == filmed(AppInfo::siteName()));
    EXPECT_FALSE(video == filmed(service.endpoints().productSite.host()));
}

TEST_F(VideoStageTest, theFramesShapeIsTheOneThatIsSet)
{
    useFolder({u"Lake.mp3"_s});
    preferences.set(u"outputVideoAspect"_s, u"1:1"_s);
    runToTheEnd();
    EXPECT_THAT(logged(), Contains(u"info: Rendering with the app's own engine at 1:1."_s));
    EXPECT_EQ(shapeOf(path(u"Videos/Lake.mp4"_s)), u"1080,1080 2");
}

TEST_F(VideoStageTest, aVideoOnDiskCountsAsDone)
{
    useFolder({u"Lake.mp3"_s, u"Ocean.mp3"_s});
    write(u"Videos/Lake.webm"_s, "kept");
    runToTheEnd();
    EXPECT_EQ(logged(),
              (QStringList{u"info: Rendering with the app's own engine at 9:16."_s,
                           u"info: 1 video(s) already rendered — skipping those."_s,
                           u"info: 1 video(s) to render — about 28s."_s, u"info: You can minimise the window."_s,
                           u"success: Rendered Ocean"_s, u"success: Finished — 1 done, 5 switched off."_s}));
    EXPECT_EQ(videos(), (QStringList{u"Lake.webm"_s, u"Ocean.mp4"_s}));
    EXPECT_EQ(read(u"Videos/Lake.webm"_s), "kept");
}

TEST_F(VideoStageTest, allTracksWithVideosOnDiskGiveNoEstimate)
{
    useFolder({u"Lake.mp3"_s, u"Ocean.mp3"_s});
    for (const QString& name : {u"Videos/Lake.mp4"_s, u"Videos/Ocean.mp4"_s})
        write(name, "kept");
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::video), StageState::done(u"all 2 already rendered"_s));
    EXPECT_EQ(logged(), (QStringList{u"info: Rendering with the app's own engine at 9:16."_s,
                                     u"info: 2 video(s) already rendered — skipping those."_s,
                                     u"success: Finished — 1 done, 5 switched off."_s}));
}

TEST_F(VideoStageTest, aTrackWithNoAudioOnDiskIsSkippedAndIsNoFailure)
{
    useFolder({u"Lake.mp3"_s, u"Ocean.mp3"_s});
    onLine = [this](const QString& line) {
        if (line.startsWith(u"info: Rendering with")) {
            EXPECT_TRUE(QFile::remove(path(u"Lake.mp3"_s)));
        }
    };
    runToTheEnd();
    EXPECT_THAT(logged(), Contains(u"info: No audio on disk for Lake — skipped."_s));
    EXPECT_EQ(outcome(Stage::video), StageState::done(u"1 video(s) rendered"_s));
    EXPECT_EQ(videos(), QStringList{u"Ocean.mp4"_s});
}

TEST_F(VideoStageTest, aTrackThatFailsIsSaidAndTheNextIsRendered)
{
    useFolder({u"Ocean.mp3"_s});
    write(u"Lake.mp3"_s, "not audio");
    runToTheEnd();
    EXPECT_THAT(logged(), Contains(u"error: Video failed for Lake: Could not read Lake.mp3."_s));
    EXPECT_EQ(outcome(Stage::video), StageState::failed(u"1 video(s) rendered, 1 failed"_s));
    EXPECT_EQ(logged().last(), u"error: Stopped — 0 done, 5 switched off, 1 failed."_s);
    EXPECT_EQ(videos(), QStringList{u"Ocean.mp4"_s});
}

TEST_F(VideoStageTest, aStopInARenderGivesTheTrackUpAndTheNextRunFinishes)
{
    useFolder({u"Lake.mp3"_s, u"Ocean.mp3"_s, u"River.mp3"_s});
    onProgress = [this](const RunProgress& now) {
        if (now.label == u"video 2 of 3 — Ocean — 0%")
            run().stop();
    };
    runToTheEnd();
    EXPECT_THAT(logged(), Contains(u"error: Video failed for Ocean: Cancelled."_s));
    EXPECT_EQ(outcome(Stage::video), StageState::failed(u"stopped 2 of 3 — the rest were not reached"_s));
    EXPECT_EQ(videos(), QStringList{u"Lake.mp4"_s});
    onProgress = {};
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::video), StageState::done(u"2 video(s) rendered"_s));
    EXPECT_EQ(videos(), (QStringList{u"Lake.mp4"_s, u"Ocean.mp4"_s, u"River.mp4"_s}));
}

TEST_F(VideoStageTest, aStopBetweenTwoTracksLeavesTheRestUnreached)
{
    useFolder({u"Lake.mp3"_s, u"Ocean.mp3"_s});
    stopAt(u"success: Rendered Lake"_s);
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::video), StageState::failed(u"stopped 1 of 2 — the rest were not reached"_s));
    EXPECT_EQ(videos(), QStringList{u"Lake.mp4"_s});
}

TEST_F(VideoStageTest, aStopAfterTheLastTrackLeavesTheStageDone)
{
    useFolder({u"Lake.mp3"_s});
    stopAt(u"success: Rendered Lake"_s);
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::video), StageState::done(u"1 video(s) rendered"_s));
}

TEST_F(VideoStageTest, theVideoIsNamedAsTheRenameNamedTheTrack)
{
    useFolder({u"001 - Ocean.mp3"_s});
    choices.rename = true;
    runToTheEnd();
    EXPECT_EQ(run().renamedStems().value(u"001 - Ocean"_s), u"Ocean");
    EXPECT_EQ(videos(), QStringList{u"Ocean.mp4"_s});
}

TEST_F(VideoStageTest, aLibraryIsFilmedAfterItsDownload)
{
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::video), StageState::done(u"2 video(s) rendered"_s));
    EXPECT_EQ(videos().size(), 2);
}

TEST_F(VideoStageTest, nothingDownloadedLeavesNothingToRender)
{
    for (const demo::Track& track : service.tracks())
        service.script(answering(404, track.id + u".mp3"_s, 10));
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::video), StageState::skipped(u"nothing downloaded to render"_s));
    EXPECT_FALSE(QFile::exists(path(u"Videos"_s)));
}

TEST_F(VideoStageTest, aFolderThatCannotBeMadeFailsTheStage)
{
    useFolder({u"Lake.mp3"_s});
    write(u"Videos"_s, "a file");
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::video).kind, StageState::Kind::failed);
    EXPECT_THAT(outcome(Stage::video).note.toStdString(), testing::HasSubstr("Videos"));
    EXPECT_THAT(logged(), Contains(u"error: "_s + outcome(Stage::video).note));
    EXPECT_EQ(read(u"Videos"_s), "a file");
}

TEST_F(VideoStageTest, theStyleOfThePageIsRemembered)
{
    useFolder({u"Lake.mp3"_s});
    run().styleProvider = []() -> QCoro::Task<std::optional<Video::VisualizerStyle>> {
        co_return Video::VisualizerStyle{.theme = u"violet"_s};
    };
    runToTheEnd();
    EXPECT_EQ(Video::VisualizerStyle::remembered(preferences).theme, u"violet");
    run().styleProvider = {};
    runToTheEnd();
    EXPECT_EQ(Video::VisualizerStyle::remembered(preferences).theme, u"violet");
}

TEST_F(VideoStageTest, aRunThatIsDestroyedInARenderLeavesNoVideo)
{
    useFolder({u"Lake.mp3"_s});
    bool isRendering = false;
    onProgress = [&isRendering](const RunProgress&) { isRendering = true; };
    run().toggle();
    ASSERT_TRUE(waitUntil([&isRendering] { return isRendering; }));
    automater.reset();
    EXPECT_THAT(videos(), IsEmpty());
}

/// A page that is covered for the first `hiddenFor` looks at it, and whose videos are texts.
class CoveredPage : public SiteVisualizer
{
public:
    int hiddenFor = 0;
    QString refusal;
    QStringList asked;
    std::function<void()> onLook;

    bool canRender() const override
    {
        if (onLook)
            onLook();
        return looks_++ >= hiddenFor;
    }

    QCoro::Task<> render(VideoWork::Order order) override
    {
        asked.append(order.title + u" / "_s + order.subtitle);
        if (hiddenFor > 0 && asked.size() == 1)
            throw Hidden("covered");
        if (!refusal.isEmpty())
            throw std::runtime_error(refusal.toStdString());
        QFile file(order.output);
        EXPECT_TRUE(file.open(QFile::WriteOnly));
        co_return;
    }

private:
    mutable int looks_ = 0;
};

class SiteVideoTest : public VideoStageTest
{
protected:
    SiteVideoTest()
    {
        choices.renderer = VideoRenderer::website;
        run().siteVisualizer = &page;
    }

    CoveredPage page;
};

TEST_F(SiteVideoTest, theSiteRendersInRealTime)
{
    useFolder({u"Lake.mp3"_s, u"Ocean.mp3"_s});
    runToTheEnd();
    EXPECT_EQ(logged(), (QStringList{u"info: Video look: 9:16 · amber · bars · none."_s,
                                     u"info: 2 video(s) to render — about 6m."_s,
                                     u"info: Leave this window open and on screen."_s, u"success: Rendered Lake"_s,
                                     u"success: Rendered Ocean"_s, u"success: Finished — 1 done, 5 switched off."_s}));
    EXPECT_EQ(page.asked, (QStringList{u"Lake / Orvane"_s, u"Ocean / Orvane"_s}));
}

TEST_F(SiteVideoTest, aCoveredPageHoldsTheTrackUntilItIsBack)
{
    useFolder({u"Lake.mp3"_s});
    page.hiddenFor = 3;
    const auto before = clock.monotonic();
    runToTheEnd();
    EXPECT_EQ(logged().mid(3),
              (QStringList{u"error: Paused — the window is covered or another tab is showing, which freezes the video "
                           "frames. Come back to the Automater to carry on."_s,
                           u"success: Resuming."_s, u"success: Rendered Lake"_s,
                           u"success: Finished — 1 done, 5 switched off."_s}));
    EXPECT_EQ(page.asked, (QStringList{u"Lake / Orvane"_s, u"Lake / Orvane"_s}));
    EXPECT_EQ(clock.monotonic() - before, std::chrono::seconds(6));
    EXPECT_EQ(lines.count(u"> Render videos: running"_s), 2);
}

TEST_F(SiteVideoTest, aStopEndsTheWaitForThePage)
{
    useFolder({u"Lake.mp3"_s, u"Ocean.mp3"_s});
    page.hiddenFor = 1'000'000;
    page.onLook = [this] { run().stop(); };
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::video), StageState::failed(u"stopped 0 of 2 — the rest were not reached"_s));
    EXPECT_EQ(page.asked.size(), 1);
    EXPECT_FALSE(logged().contains(u"success: Resuming."_s));
}

TEST_F(SiteVideoTest, anyOtherFailureIsCountedAndTheNextTrackRendered)
{
    useFolder({u"Lake.mp3"_s, u"Ocean.mp3"_s});
    page.refusal = u"The render finished but produced no file."_s;
    runToTheEnd();
    EXPECT_THAT(logged(),
                testing::IsSupersetOf({u"error: Video failed for Lake: The render finished but produced no file."_s,
                                       u"error: Video failed for Ocean: The render finished but produced no file."_s}));
    EXPECT_EQ(outcome(Stage::video), StageState::failed(u"0 video(s) rendered, 2 failed"_s));
}

TEST_F(SiteVideoTest, withoutThePageEachTrackSaysSo)
{
    useFolder({u"Lake.mp3"_s});
    run().siteVisualizer = nullptr;
    runToTheEnd();
    EXPECT_THAT(logged(), Contains(u"error: Video failed for Lake: The website's visualizer is not there."_s));
}

} // namespace
} // namespace orvane::test
