#include "tests/automation/RunFixture.h"

#include <QDir>

/// A run that is stopped, or whose folder somebody else changes.

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

using RunFaultTest = RunFixture;

TEST_F(RunFaultTest, aStopDuringTheDownloadLeavesTheLaterStagesAndANewRunFindsTheFiles)
{
    onProgress = [this](const RunProgress& at) {
        if (at.done == 1)
            run().toggle();
    };
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::download), StageState::failed(u"stopped 1 of 2"_s));
    EXPECT_EQ(logged(), (QStringList{u"error: Stopping…"_s, u"error: Stopped — 1 done, 1 failed, 4 not reached."_s}));
    EXPECT_TRUE(summaries.value(0).wasStopped);
    EXPECT_TRUE(files().contains(u"001 - "_s + title(0) + u".mp3"_s));

    onProgress = nullptr;
    service.clearRequests();
    runToTheEnd();
    EXPECT_TRUE(summaries.value(1).isSuccess());
    EXPECT_FALSE(summaries.value(1).wasStopped);
    for (const demo::SeenRequest& request : service.requests())
        EXPECT_FALSE(request.target.contains(service.tracks().at(0).id.toUtf8() + ".mp3"));
    EXPECT_EQ(files(u"Mastered"_s).size(), 2);
}

TEST_F(RunFaultTest, aStopInAStageLeavesTheLaterStagesUntold)
{
    useFolder({u"001 - Ocean.mp3"_s, u"002 - Lake.mp3"_s});
    onProgress = [this](const RunProgress& at) {
        if (at.stage == Stage::rename)
            run().stop();
    };
    runToTheEnd();
    EXPECT_EQ(run().outcomes().keys(), (QList<Stage>{Stage::read, Stage::download, Stage::rename}));
    EXPECT_FALSE(summaries.value(0).isSuccess());
}

TEST_F(RunFaultTest, aSecondStopSaysNothingMore)
{
    onProgress = [this](const RunProgress& at) {
        if (at.done != 1)
            return;
        run().stop();
        run().stop();
    };
    runToTheEnd();
    EXPECT_EQ(logged().count(u"error: Stopping…"_s), 1);
}

TEST_F(RunFaultTest, filesThatSomebodyRemovesBetweenTheStagesArePassedOver)
{
    useFolder({u"001 - Ocean.mp3"_s, u"002 - Lake.mp3"_s});
    onLine = [this](const QString& line) {
        if (line == u"> Write tags: running")
            removeFile(u"Ocean.mp3"_s);
    };
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::tag), StageState::done(u"1 file(s)"_s));
    EXPECT_EQ(files(u"Mastered"_s), QStringList{u"Lake.wav"_s});
}

TEST_F(RunFaultTest, filesThatSomebodyRemovesDuringAStageAreTold)
{
    useFolder({u"Lake.mp3"_s, u"Ocean.mp3"_s});
    only(Stage::tag);
    onProgress = [this](const RunProgress& at) {
        if (at.done == 1)
            removeFile(u"Ocean.mp3"_s);
    };
    runToTheEnd();
    EXPECT_EQ(logged().first(), u"error: Tagging failed for Ocean: Ocean.mp3: No such file or directory"_s);
    EXPECT_EQ(outcome(Stage::tag), StageState::done(u"1 tagged, 1 failed"_s));
}

TEST_F(RunFaultTest, aDestinationThatVanishesIsNotMadeAgain)
{
    useFolder({u"001 - Ocean.mp3"_s});
    onLine = [this](const QString& line) {
        if (line == u"> Rename to your scheme: running")
            removeFolder();
    };
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::rename), StageState::failed(u"Tracklist.txt: No such file or directory"_s));
    EXPECT_EQ(outcome(Stage::tag), StageState::done(u"0 file(s)"_s));
    EXPECT_EQ(outcome(Stage::master), StageState::failed(u"Mastered: No such file or directory"_s));
    EXPECT_FALSE(QDir(folder()).exists());
}

TEST_F(RunFaultTest, aDestinationThatVanishesInTheTagsOrTheMastersIsToldAndNotMadeAgain)
{
    for (const Stage stage : {Stage::tag, Stage::master}) {
        SCOPED_TRACE(nameOf(stage).toStdString());
        lines.clear();
        useFolder({u"Lake.mp3"_s, u"Ocean.mp3"_s});
        only(stage);
        onProgress = [this, stage](const RunProgress& at) {
            if (at.stage == stage && at.done == 1)
                removeFolder();
        };
        runToTheEnd();
        const QString told =
            stage == Stage::tag ? u"error: Tagging failed for Ocean: "_s : u"error: Mastering failed for Ocean: "_s;
        EXPECT_THAT(logged(), testing::Contains(told + u"Ocean.mp3: No such file or directory"_s));
        EXPECT_EQ(outcome(stage).note, stage == Stage::tag ? u"1 tagged, 1 failed"_s : u"1 mastered, 1 failed"_s);
        EXPECT_FALSE(QDir(folder()).exists());
    }
}

TEST_F(RunFaultTest, filesThatSomebodyRenamesBetweenTheStagesArePassedOver)
{
    useFolder({u"001 - Ocean.mp3"_s, u"002 - Lake.mp3"_s});
    onLine = [this](const QString& line) {
        if (line == u"> Write tags: running")
            QFile::rename(path(u"Ocean.mp3"_s), path(u"Sea.mp3"_s));
    };
    runToTheEnd();
    EXPECT_EQ(outcome(Stage::tag), StageState::done(u"1 file(s)"_s));
    EXPECT_EQ(read(u"Sea.mp3"_s), recording());
    EXPECT_EQ(files(u"Mastered"_s), QStringList{u"Lake.wav"_s});
}

TEST_F(RunFaultTest, aDestinationThatVanishesInTheDownloadFailsEachTrack)
{
    onProgress = [this](const RunProgress& at) {
        if (at.stage == Stage::download && at.done == 1)
            removeFolder();
    };
    runToTheEnd();
    EXPECT_TRUE(outcome(Stage::download).note.startsWith(u"1 of 2 tracks, "))
        << outcome(Stage::download).note.toStdString();
    EXPECT_FALSE(QDir(folder()).exists());
    EXPECT_FALSE(summaries.value(0).isSuccess());
}

TEST_F(RunFaultTest, aFileInTheWayOfTheMastersFailsTheMastering)
{
    useFolder({u"Ocean.mp3"_s});
    only(Stage::master);
    write(u"Mastered"_s, "in the way");
    runToTheEnd();
    EXPECT_TRUE(outcome(Stage::master).note.startsWith(u"Mastered: ")) << outcome(Stage::master).note.toStdString();
    EXPECT_EQ(outcome(Stage::master).kind, StageState::Kind::failed);
    EXPECT_EQ(read(u"Mastered"_s), "in the way");
}

TEST_F(RunFaultTest, leftoversOfAKilledRunAreRemoved)
{
    useFolder({u"Ocean.mp3"_s});
    write(u".Ocean.mp3.tagging"_s, "half");
    write(u"Mastered/.Ocean.wav.new"_s, "half");
    runToTheEnd();
    EXPECT_EQ(files(), (QStringList{u"Ocean.mp3"_s, u"Tracklist.txt"_s}));
    EXPECT_EQ(files(u"Mastered"_s), QStringList{u"Ocean.wav"_s});
}

} // namespace
} // namespace orvane::test
