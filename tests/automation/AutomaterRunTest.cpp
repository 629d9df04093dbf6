#include "tests/automation/RunFixture.h"

#include <QSignalSpy>

/// A run as a whole: when it goes, what it tells, and what it leaves behind.

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

using AutomaterRunTest = RunFixture;

TEST_F(AutomaterRunTest, aWholeRunReadsDownloadsRenamesTagsAndMasters)
{
    runToTheEnd();
    EXPECT_TRUE(summaries.value(0).isSuccess());
    EXPECT_EQ(logged().last(), u"success: Finished — 5 done, 1 switched off."_s);
    for (const demo::Track& track : service.tracks()) {
        EXPECT_TRUE(files().contains(track.title + u".mp3"_s)) << track.title.toStdString();
        EXPECT_TRUE(files(u"Mastered"_s).contains(track.title + u".wav"_s)) << track.title.toStdString();
    }
    EXPECT_EQ(read(u"Tracklist.txt"_s), (u"01. "_s + title(0) + u"\n02. "_s + title(1)).toUtf8());
}

TEST_F(AutomaterRunTest, withoutAConfigurationNothingHappens)
{
    run().configProvider = [] { return std::optional<PipelineConfig>(); };
    run().toggle();
    EXPECT_FALSE(run().isRunning());
    EXPECT_THAT(lines, IsEmpty());
}

TEST_F(AutomaterRunTest, aPrerequisiteThatIsNotMetIsSaidAndChangesNothing)
{
    session.setToken({});
    run().toggle();
    EXPECT_EQ(lines, QStringList{u"error: Not ready yet — see the list above."_s});
    EXPECT_FALSE(run().isRunning());
    EXPECT_FALSE(session.automationInProgress);
}

TEST_F(AutomaterRunTest, prerequisitesAreAskedInOrderUpToTheFirstThatIsNotMet)
{
    QStringList asked;
    const auto asking = [&asked](const QString& name, bool isMet) {
        return Prerequisite{.title = name,
                            .fix = {},
                            .tab = {},
                            .isMet =
                                [&asked, name, isMet] {
                                    asked.append(name);
                                    return isMet;
                                },
                            .detail = {}};
    };
    run().prerequisites = {asking(u"one"_s, true), asking(u"two"_s, false), asking(u"three"_s, true)};
    run().toggle();
    EXPECT_EQ(asked, (QStringList{u"one"_s, u"two"_s}));
}

TEST_F(AutomaterRunTest, whileTheDownloaderExportsItSaysSoAndChangesNothing)
{
    session.downloadInProgress = true;
    run().toggle();
    EXPECT_EQ(lines,
              QStringList{u"error: The Downloader is already exporting. Let it finish, or stop it there first."_s});
    EXPECT_FALSE(run().isRunning());
    EXPECT_FALSE(session.automationInProgress);
}

TEST_F(AutomaterRunTest, theSessionIsBusyFromTheStartToTheEnd)
{
    QStringList order;
    QObject::connect(&run(), &AutomaterRun::runningChanged, &run(), [&](bool running) {
        EXPECT_EQ(session.automationInProgress, running);
        EXPECT_EQ(run().isRunning(), running);
        order.append(running ? u"begins"_s : u"rests"_s);
    });
    QObject::connect(&run(), &AutomaterRun::finished, &run(), [&] { order.append(u"finished"_s); });
    runToTheEnd();
    EXPECT_EQ(order, (QStringList{u"begins"_s, u"rests"_s, u"finished"_s}));
}

TEST_F(AutomaterRunTest, theProgressNamesTheTrackAtHand)
{
    only(Stage::master);
    runToTheEnd();
    QStringList labels;
    for (const RunProgress& at : progress)
        labels.append(at.label);
    EXPECT_EQ(labels,
              (QStringList{u"1 of 2 tracks — "_s + title(0), u"2 of 2 tracks — "_s + title(1), QString(),
                           u"mastering 1 of 2 — 001 - "_s + title(0), u"mastering 2 of 2 — 002 - "_s + title(1)}));
    EXPECT_EQ(progress.at(1).fraction(), 0.5);
    EXPECT_EQ(progress.at(2).fraction(), 1.0);
}

TEST_F(AutomaterRunTest, preferencesOfAnotherKindCountAsNone)
{
    useFolder({u"Ocean.mp3"_s});
    only(Stage::master);
    preferences.set(u"watermark.auto.on"_s, u"yes"_s);
    preferences.set(u"watermark.auto.file"_s, 7);
    preferences.set(u"watermark.auto.level"_s, u"loud"_s);
    preferences.set(u"watermark.auto.placement"_s, true);
    preferences.set(u"mp3Bitrate"_s, u"many"_s);
    runToTheEnd();
    EXPECT_EQ(logged().size(), 3);
    EXPECT_EQ(outcome(Stage::master), StageState::done(u"1 mastered for Spotify"_s));
}

TEST_F(AutomaterRunTest, theFolderIsOpenedWhereTheUserWantsItAndSomethingWasDone)
{
    QList<QUrl> opened;
    run().onOpenFolder = [&](const QUrl& which) { opened.append(which); };
    useFolder({u"Ocean.mp3"_s});
    only(Stage::tag);
    runToTheEnd();
    EXPECT_THAT(opened, IsEmpty());
    choices.openWhenDone = true;
    runToTheEnd();
    EXPECT_THAT(opened, ElementsAre(session.destination()));
    only(Stage::video);
    runToTheEnd();
    EXPECT_EQ(opened.size(), 1);
}

TEST_F(AutomaterRunTest, aLaterRunBeginsWithEmptyOutcomesAndStems)
{
    useFolder({u"001 - Ocean.mp3"_s});
    runToTheEnd();
    EXPECT_FALSE(run().renamedStems().isEmpty());
    QObject::connect(&run(), &AutomaterRun::runningChanged, &run(), [this](bool running) {
        if (!running)
            return;
        EXPECT_THAT(run().outcomes(), IsEmpty());
        EXPECT_THAT(run().renamedStems(), IsEmpty());
    });
    runToTheEnd();
}

TEST_F(AutomaterRunTest, theFilesAreAnnouncedAsChanged)
{
    useFolder({u"001 - Ocean.mp3"_s});
    only(Stage::rename);
    QSignalSpy changed(&session, &Session::filesChanged);
    runToTheEnd();
    EXPECT_EQ(changed.size(), 1);
}

TEST_F(AutomaterRunTest, timeLeftIsToldFromTheFourthTrackOn)
{
    useFolder({u"A.mp3"_s, u"B.mp3"_s, u"C.mp3"_s, u"D.mp3"_s, u"E.mp3"_s});
    only(Stage::tag);
    onProgress = [this](const RunProgress&) { clock.pass(std::chrono::seconds(2)); };
    runToTheEnd();
    ASSERT_EQ(progress.size(), 5);
    EXPECT_EQ(progress.at(2).timeLeft, std::nullopt);
    EXPECT_EQ(progress.at(3).timeLeft, std::chrono::seconds(4));
    EXPECT_EQ(progress.at(4).timeLeft, std::chrono::seconds(2));
}

TEST_F(AutomaterRunTest, aRunThatIsDestroyedEndsFirst)
{
    QList<QUrl> opened;
    choices.openWhenDone = true;
    run().onOpenFolder = [&](const QUrl& which) { opened.append(which); };
    run().toggle();
    ASSERT_TRUE(waitUntil([this] { return lines.contains(u"> Download assets: running"_s); }));
    automater.reset();
    EXPECT_FALSE(session.automationInProgress);
    EXPECT_THAT(opened, IsEmpty());
}

TEST_F(AutomaterRunTest, thePlanOfAFolderCountsWhatLiesThere)
{
    useFolder({u"Ocean.mp3"_s, u"Lake.wav"_s});
    const QString plan = QCoro::waitFor(run().plan());
    EXPECT_EQ(plan, u"Read the library — not needed, uses the files in Export\n"
                    "Download assets — nothing, 2 tracks already here\n"
                    "Rename to your scheme — 2 tracks, formatted as clean, with a Tracklist.txt\n"
                    "Write tags — 1 track with an MP3\n"
                    "Master audio — 2 tracks for Spotify at -14 LUFS as WAV 24-bit, into Mastered\n"
                    "Render videos — turned off"_s);
    EXPECT_EQ(files(), (QStringList{u"Lake.wav"_s, u"Ocean.mp3"_s}));
}

TEST_F(AutomaterRunTest, thePlanOfALibraryAsksTheServiceNothing)
{
    service.clearRequests();
    EXPECT_TRUE(QCoro::waitFor(run().plan()).startsWith(u"Read the library — the whole library\n"));
    EXPECT_THAT(service.requests(), IsEmpty());
}

} // namespace
} // namespace orvane::test
