#include "demonstration/program/DiskReport.h"
#include "main/Window/MainController.h"
#include "tests/e2e/WorldTest.h"

#include <QAbstractButton>
#include <QDir>
#include <QMainWindow>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class ExportTest : public WorldTest
{
protected:
    QString buttonText() { return static_cast<QAbstractButton&>(world->control(u"startButton"_s)).text(); }

    int recordings() const { return static_cast<int>(QDir(libraryFolder()).entryList({u"*.mp3"_s}).size()); }

    bool isOpen() { return world->delegate.window()->isVisible(); }

    /// The library is in the folder, file by file, and nothing else.
    void expectWholeLibrary(int files)
    {
        const demo::DiskReport report = demo::reportOn(libraryFolder(), world->service);
        EXPECT_EQ(report.faults.join(u'\n').toStdString(), "");
        EXPECT_EQ(report.files, files);
    }
};

TEST_F(ExportTest, aLibraryIsSavedAsTheServiceHasIt)
{
    open(shortLibrary(8, 3));
    ASSERT_TRUE(world->signIn());
    ASSERT_TRUE(world->startExport());
    EXPECT_EQ(buttonText(), u"Stop"_s);
    ASSERT_TRUE(world->waitForEnd());
    EXPECT_EQ(buttonText(), u"Start batch export"_s);
    EXPECT_TRUE(world->logHas(u"Found 8 tracks."_s));
    EXPECT_TRUE(world->logHas(u"Done — 8 tracks saved."_s));
    int withLyrics = 0;
    for (const demo::Track& track : world->service.tracks())
        withLyrics += track.hasLyrics ? 1 : 0;
    expectWholeLibrary(3 * 8 + withLyrics);
}

TEST_F(ExportTest, aStoppedExportGoesOnWhereItWas)
{
    constexpr int tracks = 8;
    open(shortLibrary(tracks));
    ASSERT_TRUE(world->signIn());
    // The fifth recording does not come, so that the stop finds the run in its middle.
    world->service.script({.kind = demo::Fault::Kind::silence, .where = u".mp3"_s, .after = 4});
    ASSERT_TRUE(world->startExport());
    ASSERT_TRUE(world->waitUntil([this] { return world->assetRequests() == 2 * 4 + 1; }));
    ASSERT_TRUE(world->person.click(world->control(u"startButton"_s)));
    ASSERT_TRUE(world->waitForEnd());
    EXPECT_TRUE(world->logHas(u"Stopped. Anything already saved was kept — starting again resumes from here."_s));
    EXPECT_EQ(recordings(), 4);

    world->service.clearFaults();
    world->service.clearRequests();
    ASSERT_TRUE(world->startExport());
    ASSERT_TRUE(world->waitForEnd());
    EXPECT_EQ(demo::reportOn(libraryFolder(), world->service).faults, QStringList());
    EXPECT_EQ(world->assetRequests(), 2 * (tracks - 4));
}

TEST_F(ExportTest, closingTheWindowInAnExportAsks)
{
    open();
    ASSERT_TRUE(world->signIn());
    world->service.script({.kind = demo::Fault::Kind::silence, .where = u".mp3"_s, .times = 100});
    ASSERT_TRUE(world->startExport());
    world->delegate.window()->close();
    ASSERT_EQ(world->dialogs.questions.size(), 1);
    EXPECT_EQ(world->dialogs.questions.first().text, u"A download is still running."_s);
    EXPECT_TRUE(isOpen());
    EXPECT_TRUE(world->services.session.downloadInProgress);

    world->dialogs.answer = true;
    world->delegate.window()->close();
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(world->dialogs.questions.size(), 2);
}

} // namespace
} // namespace orvane::test
