#include "tests/suno/LibraryExportFixture.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using Ending = ExportResult::Ending;

class ExportRefusal : public LibraryExportFixture
{
};

TEST_F(ExportRefusal, withoutATokenItSaysSoAndChangesNothing)
{
    session.setToken({});
    service.clearRequests();
    exporter->toggle({.workspace = {}, .assets = everything});
    EXPECT_EQ(lines, QList<Line>{error(u"No Suno session yet — open the Suno tab and sign in first."_s)});
    EXPECT_FALSE(exporter->isRunning());
    EXPECT_FALSE(session.downloadInProgress);
    EXPECT_FALSE(QFile::exists(folder()));
}

TEST_F(ExportRefusal, whileTheAutomaterRunsItSaysSoAndChangesNothing)
{
    session.automationInProgress = true;
    exporter->toggle({.workspace = {}, .assets = everything});
    EXPECT_EQ(lines, QList<Line>{error(u"The Automater is running. Let it finish, or stop it there first."_s)});
    EXPECT_FALSE(exporter->isRunning());
    EXPECT_FALSE(session.downloadInProgress);
    EXPECT_TRUE(session.automationInProgress);
    EXPECT_FALSE(QFile::exists(folder()));
}

TEST_F(ExportRefusal, aMissingTokenIsToldOfBeforeTheAutomater)
{
    session.setToken({});
    session.automationInProgress = true;
    exporter->toggle({});
    EXPECT_EQ(lines, QList<Line>{error(u"No Suno session yet — open the Suno tab and sign in first."_s)});
}

TEST_F(ExportRefusal, aFolderThatCannotBeMadeEndsItBeforeAPageIsRead)
{
    QFile obstacle(home.filePath(u"Export"_s));
    ASSERT_TRUE(obstacle.open(QFile::WriteOnly));
    service.clearRequests();
    QSignalSpy filesChanged(&session, &Session::filesChanged);
    runToTheEnd();
    EXPECT_EQ(lines, QList<Line>{error(u"deep: Not a directory"_s)});
    EXPECT_TRUE(service.requests().isEmpty());
    EXPECT_EQ(results.first().ending, Ending::failed);
    EXPECT_EQ(filesChanged.count(), 0);
    EXPECT_FALSE(session.downloadInProgress);
}

TEST_F(ExportRefusal, aFolderThatTakesNoFileEndsItBeforeAPageIsRead)
{
    ASSERT_TRUE(QDir().mkpath(folder() + u"/.orvane-write-test"_s));
    service.clearRequests();
    runToTheEnd();
    EXPECT_EQ(lines, QList<Line>{error(u"deep: Is a directory"_s)});
    EXPECT_TRUE(service.requests().isEmpty());
}

TEST_F(ExportRefusal, theWriteTestLeavesNothingBehind)
{
    runToTheEnd({});
    EXPECT_TRUE(QDir(folder()).exists());
    EXPECT_EQ(files(), QStringList());
}

TEST_F(ExportRefusal, nothingTickedIsSaidAfterTheTracksWereFound)
{
    service.clearRequests();
    runToTheEnd({});
    EXPECT_EQ(lines, readingOfSeven() << nothingTicked);
    EXPECT_EQ(results.first().ending, Ending::nothingTicked);
    EXPECT_EQ(assetRequests(), QStringList());
    EXPECT_TRUE(steps.isEmpty());
}

} // namespace
} // namespace orvane::test
