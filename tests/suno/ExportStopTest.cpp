#include "tests/suno/LibraryExportFixture.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using Ending = ExportResult::Ending;

class ExportStop : public LibraryExportFixture
{
};

TEST_F(ExportStop, aStopBeforeTheFirstTrackGivesTheStoppedLineAndNoFile)
{
    stopAtLine(u"Found 7 tracks."_s);
    QSignalSpy filesChanged(&session, &Session::filesChanged);
    runToTheEnd();
    EXPECT_EQ(lines, readingOfSeven() << stopping << stopped);
    EXPECT_EQ(files(), QStringList());
    EXPECT_TRUE(steps.isEmpty());
    EXPECT_EQ(results.first().ending, Ending::stopped);
    EXPECT_EQ(filesChanged.count(), 1);
}

TEST_F(ExportStop, aStopInTheMiddleKeepsWhatIsSaved)
{
    stopAtTrack(3);
    runToTheEnd({Asset::audio, Asset::lrc});
    EXPECT_EQ(lines, readingOfSeven() << stopping << stopped);
    EXPECT_EQ(recordings().size(), 3);
    EXPECT_EQ(files().size(), 6);
    EXPECT_EQ(steps.size(), 4);
}

TEST_F(ExportStop, aStopWhileTheFirstPageIsAwaitedGivesTheStoppedLine)
{
    service.script(silent(u"page=1"_s));
    stopAtLine(u"Querying page 1…"_s);
    runToTheEnd();
    EXPECT_EQ(lines, (QList<Line>{info(u"Querying page 1…"_s), stopping, error(u"Found 0 tracks."_s), stopped}));
    EXPECT_TRUE(results.first().wasStopped);
}

TEST_F(ExportStop, aStopWhileALaterPageIsAwaitedIsAStopAndNoIncompleteLibrary)
{
    service.script(silent(u"page=2"_s));
    stopAtLine(u"Querying page 2…"_s);
    runToTheEnd();
    EXPECT_EQ(lines.last(), stopped);
    EXPECT_THAT(lines, testing::Contains(error(u"Found 5 tracks."_s)));
    EXPECT_EQ(files(), QStringList());
}

TEST_F(ExportStop, everyPressOfStopIsAnswered)
{
    onStep = [this](const ExportProgress& progress) {
        if (progress.done == 0) {
            exporter->toggle({});
            exporter->toggle({});
        }
    };
    runToTheEnd({Asset::audio});
    EXPECT_EQ(lines, readingOfSeven() << stopping << stopping << stopped);
}

TEST_F(ExportStop, destroyingItEndsARunThatWaitsForTheNetwork)
{
    service.script(silent(u"page=1"_s));
    QSignalSpy logged(exporter.get(), &LibraryExport::logged);
    exporter->toggle({.workspace = {}, .assets = everything});
    ASSERT_TRUE(logged.count() > 0 || logged.wait(30'000));
    lines.clear();
    exporter.reset();
    EXPECT_FALSE(session.downloadInProgress);
    EXPECT_TRUE(lines.isEmpty());
    EXPECT_TRUE(results.isEmpty());
}

} // namespace
} // namespace orvane::test
