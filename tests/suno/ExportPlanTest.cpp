#include "suno/ExportPlan.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class ExportPlan : public testing::Test
{
protected:
    void putFile(const QString& name) const
    {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QFile::WriteOnly));
    }

    QList<PlannedTrack> planFor(const QStringList& titles) const
    {
        QList<Clip> clips;
        for (const QString& title : titles) {
            Clip clip;
            clip.id = u"id"_s;
            clip.title = title;
            clips.append(clip);
        }
        return planExport(clips, folder.path());
    }

    QTemporaryDir folder;
};

PlannedTrack fresh(const QString& safeTitle, const QString& base)
{
    return {.names = {.safeTitle = safeTitle, .base = base}, .isKnown = false};
}

PlannedTrack known(const QString& safeTitle, const QString& base)
{
    return {.names = {.safeTitle = safeTitle, .base = base}, .isKnown = true};
}

TEST_F(ExportPlan, numbersTheTracksInTheOrderOfTheLibrary)
{
    EXPECT_EQ(planFor({u"One"_s, u"a/b"_s, u"..."_s}),
              (QList<PlannedTrack>{fresh(u"One"_s, u"001 - One"_s), fresh(u"a_b"_s, u"002 - a_b"_s),
                                   fresh(u"track_3"_s, u"003 - track_3"_s)}));
}

TEST_F(ExportPlan, aTrackThatIsThereKeepsItsName)
{
    putFile(u"007 - Song.mp3"_s);
    EXPECT_EQ(planFor({u"New"_s, u"SONG"_s}),
              (QList<PlannedTrack>{fresh(u"New"_s, u"001 - New"_s), known(u"SONG"_s, u"007 - Song"_s)}));
}

TEST_F(ExportPlan, twinsAreTwoOnTheFirstRunAndOneOnTheNext)
{
    EXPECT_EQ(planFor({u"Same"_s, u"Same"_s}),
              (QList<PlannedTrack>{fresh(u"Same"_s, u"001 - Same"_s), fresh(u"Same"_s, u"002 - Same"_s)}));
    putFile(u"001 - Same.mp3"_s);
    putFile(u"002 - Same.mp3"_s);
    EXPECT_EQ(planFor({u"Same"_s, u"Same"_s}),
              (QList<PlannedTrack>{known(u"Same"_s, u"001 - Same"_s), known(u"Same"_s, u"001 - Same"_s)}));
}

TEST_F(ExportPlan, anEmptyLibraryHasNoPlan)
{
    EXPECT_TRUE(planFor({}).isEmpty());
}

} // namespace
} // namespace orvane::test
