#include "tests/suno/LibraryExportFixture.h"

#include <QDir>
#include <QFile>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class ExportResume : public LibraryExportFixture
{
};

TEST_F(ExportResume, aSecondRunAsksForNoFileThatIsThere)
{
    const AssetSet assets{Asset::audio, Asset::lyrics, Asset::lrc};
    runToTheEnd(assets);
    const QStringList before = files();
    service.clearRequests();
    lines.clear();
    runToTheEnd(assets);
    EXPECT_EQ(assetRequests(), QStringList());
    EXPECT_EQ(files(), before);
    EXPECT_EQ(lines, readingOfSeven() << success(u"Done — 7 tracks saved."_s));
}

TEST_F(ExportResume, coversAreNotAskedForTwice)
{
    runToTheEnd();
    // Two tracks of one title share a name from the second run on, under which the second one's cover is new.
    runToTheEnd();
    const QStringList before = files();
    service.clearRequests();
    runToTheEnd();
    EXPECT_EQ(assetRequests(), QStringList());
    EXPECT_EQ(files(), before);
}

TEST_F(ExportResume, aSecondRunKeepsTheNumberThatATrackHadBeforeNewOnesCame)
{
    runToTheEnd({Asset::lrc});
    const QString first = steps.first().base;
    service.addTracks(2);
    steps.clear();
    runToTheEnd({Asset::lrc});
    ASSERT_EQ(steps.size(), 10);
    EXPECT_TRUE(steps.at(0).base.startsWith(u"001 - "));
    EXPECT_EQ(steps.at(2).base, first);
}

TEST_F(ExportResume, aStoppedRunIsFinishedByTheNext)
{
    stopAtTrack(3);
    runToTheEnd({Asset::audio});
    onStep = nullptr;
    lines.clear();
    service.clearRequests();
    runToTheEnd({Asset::audio});
    EXPECT_EQ(lines.last(), success(u"Done — 7 tracks saved."_s));
    EXPECT_EQ(assetRequests().size(), 4);
    EXPECT_EQ(recordings().size(), 7);
}

TEST_F(ExportResume, whatAKilledRunLeftIsRemoved)
{
    ASSERT_TRUE(QDir().mkpath(folder()));
    QFile leftover(folder() + u"/001 - Song.mp3.part"_s);
    ASSERT_TRUE(leftover.open(QFile::WriteOnly));
    leftover.close();
    runToTheEnd({});
    EXPECT_EQ(files(), QStringList());
}

} // namespace
} // namespace orvane::test
