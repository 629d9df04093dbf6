#include "automation/RunChoices.h"
#include "demonstration/program/ChainDemonstration.h"
#include "demonstration/program/ChainReport.h"
#include "demonstration/program/DownloadDemonstration.h"
#include "tests/e2e/WorldTest.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class DemonstrationTest : public WorldTest
{
protected:
    template <typename Kind>
    bool demonstrate()
    {
        return Kind(world->service, world->services, world->delegate, folder.path()).run();
    }

    QString path(const QString& name) const { return folder.path(u"library/"_s + name); }

    QStringList faults() const
    {
        QDir().mkpath(folder.path(u"frames"_s));
        const QString pictures = folder.path(u"frames"_s);
        return demo::reportOnChain(folder.path(u"library"_s), world->service, targetOf({}), pictures).faults;
    }

    /// What the report says while a file is as `spoil` leaves it; the file is put back.
    QStringList faultsWhere(const QString& name, const std::function<void(const QString& path)>& spoil) const
    {
        const QByteArray whole = folder.read(u"library/"_s + name);
        spoil(path(name));
        const QStringList found = faults();
        QFile::remove(path(name));
        if (!whole.isNull())
            folder.write(u"library/"_s + name, whole);
        return found;
    }

    demo::LibraryOptions tellingTracks() const { return {.tracks = 6, .shortestSeconds = 4, .longestSeconds = 5}; }
};

void cut(const QString& path)
{
    QFile file(path);
    file.resize(file.size() - 1);
}

void empty(const QString& path)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QFile::WriteOnly | QFile::Truncate));
}

TEST_F(DemonstrationTest, theChainIsShownAndItsReportFindsWhateverIsWrong)
{
    open(tellingTracks());
    ASSERT_TRUE(demonstrate<demo::ChainDemonstration>());
    EXPECT_TRUE(QFile::exists(folder.path(u"window.png"_s)));
    ASSERT_EQ(faults(), QStringList());
    EXPECT_TRUE(QFile::exists(path(u"Twin Lights.mp3"_s)));

    EXPECT_THAT(faultsWhere(u"Twin Lights (2).mp3"_s, cut),
                testing::Contains(u"Twin Lights (2).mp3 does not hold the sound that the service has."_s));
    EXPECT_EQ(faultsWhere(u"Twin Lights.lrc"_s, [](const QString& at) { QFile::remove(at); }),
              QStringList{u"Twin Lights.lrc is missing."_s});
    EXPECT_EQ(faultsWhere(u"Twin Lights lyrics.txt"_s, cut),
              QStringList{u"Twin Lights lyrics.txt does not hold what the service has."_s});
    EXPECT_EQ(faultsWhere(u"Tracklist.txt"_s, cut),
              QStringList{u"Tracklist.txt does not hold what the service has."_s});
    EXPECT_EQ(faultsWhere(u".Twin Lights.mp3.tagging"_s, empty),
              QStringList{u".Twin Lights.mp3.tagging should not be there."_s});
    EXPECT_EQ(faultsWhere(u"Mastered/Twin Lights.wav"_s, empty),
              QStringList{u"Mastered/Twin Lights.wav misses -14 LUFS or -1 dBTP."_s});
    EXPECT_THAT(faultsWhere(u"Videos/Twin Lights.mp4"_s, empty),
                testing::Contains(testing::Property(
                    &QString::toStdString, testing::StartsWith("Videos/Twin Lights.mp4 is not the film of "))));
    const QString tagged = path(u"Twin Lights.mp3"_s);
    const QString other = path(u"Twin Lights (2).mp3"_s);
    EXPECT_THAT(faultsWhere(u"Twin Lights.mp3"_s,
                            [&](const QString& at) {
                                QFile::remove(at);
                                QFile::copy(other, at);
                            }),
                testing::Contains(u"The tags of Twin Lights.mp3 are not what the service tells of it."_s));
    EXPECT_THAT(faultsWhere(u"Mastered/Twin Lights.wav"_s,
                            [&](const QString& at) {
                                QFile::remove(at);
                                QFile::copy(tagged, at);
                            }),
                testing::Contains(u"Mastered/Twin Lights.wav misses -14 LUFS or -1 dBTP."_s));
    EXPECT_EQ(faults(), QStringList());
}

TEST_F(DemonstrationTest, theChainIsNotRightWhereARecordingNeverComes)
{
    open(tellingTracks()).service.script({.where = u".mp3"_s, .status = 404});
    EXPECT_FALSE(demonstrate<demo::ChainDemonstration>());
}

TEST_F(DemonstrationTest, theDownloadIsShown)
{
    open();
    EXPECT_TRUE(demonstrate<demo::DownloadDemonstration>());
}

TEST_F(DemonstrationTest, theDownloadIsNotRightWhereARecordingNeverComes)
{
    open().service.script({.where = u".mp3"_s, .status = 404});
    EXPECT_FALSE(demonstrate<demo::DownloadDemonstration>());
}

} // namespace
} // namespace orvane::test
