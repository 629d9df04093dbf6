#include "trackfiles/namer/RenamePlan.h"

#include "tests/support/Sandbox.h"
#include "tests/support/TestFolder.h"

#include <QFile>
#include <QSet>

#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::TestFolder;
using TrackNamer::Performed;
using TrackNamer::Rename;

void fill(const TestFolder& folder, const QStringList& files)
{
    for (const QString& file : files)
        folder.write(file, file.toUtf8());
}

QStringList newNames(const QList<Rename>& plan)
{
    QStringList names;
    for (const Rename& row : plan)
        names.append(row.to);
    return names;
}

TEST(RenamePlan, twoTracksThatBothComeOutAsOceanGiveOceanAndOcean2AndOceanInCapitalsAsAThirdGives3)
{
    const TestFolder folder;
    fill(folder, {u"01 - Ocean.mp3"_s, u"02 - Ocean.mp3"_s, u"03 - OCEAN.mp3"_s});
    EXPECT_EQ(newNames(TrackNamer::plan(folder.path(), u"clean"_s)),
              (QStringList{u"Ocean"_s, u"Ocean (2)"_s, u"OCEAN (3)"_s}));
}

TEST(RenamePlan, aNumberThatIsTakenIsPassedOver)
{
    const TestFolder folder;
    fill(folder, {u"1. Ocean (2).mp3"_s, u"2. Ocean.mp3"_s, u"3. Ocean.mp3"_s});
    EXPECT_EQ(newNames(TrackNamer::plan(folder.path(), u"clean"_s)),
              (QStringList{u"Ocean (2)"_s, u"Ocean"_s, u"Ocean (3)"_s}));
}

TEST(RenamePlan, tracksStandInPlainOrderAndThePositionIsTheIndex)
{
    const TestFolder folder;
    fill(folder, {u"b.mp3"_s, u"B.mp3"_s, u"a10.mp3"_s, u"a9.mp3"_s});
    EXPECT_EQ(newNames(TrackNamer::plan(folder.path(), u"numbered"_s)),
              (QStringList{u"01 - B"_s, u"02 - a10"_s, u"03 - a9"_s, u"04 - b"_s}));
}

TEST(RenamePlan, theLyricsFileNamesATrackWhoseFileSaysNothing)
{
    const TestFolder folder;
    fill(folder, {u"001 - Untitled.mp3"_s});
    folder.write(u"001 - Untitled lyrics.txt"_s, "Title: Untitled\nTags: g\n\nstay with me\nstay with me\n");
    EXPECT_EQ(newNames(TrackNamer::plan(folder.path(), u"clean"_s)), QStringList{u"Stay with Me"_s});
}

TEST(RenamePlan, theTitleInTheLyricsFileComesBeforeTheFilesName)
{
    const TestFolder folder;
    fill(folder, {u"old.mp3"_s});
    folder.write(u"old.txt"_s, "Title: New Name\n\nwords");
    EXPECT_EQ(newNames(TrackNamer::plan(folder.path(), u"clean"_s)), QStringList{u"New Name"_s});
}

TEST(RenamePlan, aLyricsFileThatIsNotUtf8CountsAsAbsent)
{
    const TestFolder folder;
    fill(folder, {u"old.mp3"_s});
    folder.write(u"old.txt"_s, "Title: \xFF\xFE\n\nwords");
    EXPECT_EQ(newNames(TrackNamer::plan(folder.path(), u"clean"_s)), QStringList{u"old"_s});
}

TEST(RenamePlan, aLyricsFileOfFourMebibytesNamesItsTrackAndOneByteMoreCountsAsAbsent)
{
    constexpr qsizetype most = qsizetype{4} * 1024 * 1024;
    const TestFolder folder;
    fill(folder, {u"old.mp3"_s});
    const QByteArray start = "Title: New Name\n\n";
    const QByteArray longest = start + QByteArray(most - start.size(), 'x');
    folder.write(u"old.txt"_s, longest);
    EXPECT_EQ(newNames(TrackNamer::plan(folder.path(), u"clean"_s)), QStringList{u"New Name"_s});
    folder.write(u"old.txt"_s, longest + 'x');
    EXPECT_EQ(newNames(TrackNamer::plan(folder.path(), u"clean"_s)), QStringList{u"old"_s});
}

TEST(RenamePlan, anOverrideIsTakenAsItStandsWithoutThePattern)
{
    const TestFolder folder;
    fill(folder, {u"a.mp3"_s, u"b.mp3"_s});
    EXPECT_EQ(newNames(TrackNamer::plan(folder.path(), u"live"_s, {}, {{u"a"_s, u"  Mine \n"_s}, {u"b"_s, u" "_s}})),
              (QStringList{u"Mine"_s, u"b (Live at Sunset)"_s}));
}

TEST(RenamePlan, anInventedNameIsWrittenByThePatternAndAnEmptyOneIsNone)
{
    const TestFolder folder;
    fill(folder, {u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s});
    EXPECT_EQ(newNames(TrackNamer::plan(folder.path(), u"numbered"_s, QStringList{u"Dawn"_s, u""_s})),
              (QStringList{u"01 - Dawn"_s, u"02 - b"_s, u"03 - c"_s}));
}

TEST(RenamePlan, namesAreMadeSafeAndNeverEmpty)
{
    const TestFolder folder;
    fill(folder, {u"a.mp3"_s, u"b.mp3"_s});
    EXPECT_EQ(newNames(TrackNamer::plan(folder.path(), u"clean"_s, {}, {{u"a"_s, u"../../x/y"_s}, {u"b"_s, u"..."_s}})),
              (QStringList{u"_.._x_y"_s, u"Track 2"_s}));
}

TEST(RenamePlan, everyFileWithTheStemMovesAndOthersStay)
{
    const TestFolder folder;
    fill(folder, {u"Song.mp3"_s, u"Song lyrics.txt"_s, u"Song (Spotify).wav"_s, u"Song.lrc"_s, u"Songbird.png"_s});
    const QList<Rename> plan = TrackNamer::plan(folder.path(), u"clean"_s, {}, {{u"Song"_s, u"Tune"_s}});
    ASSERT_EQ(plan.size(), 2);
    EXPECT_EQ(plan.first().files, (QStringList{folder.path(u"Song (Spotify).wav"_s), folder.path(u"Song lyrics.txt"_s),
                                               folder.path(u"Song.lrc"_s), folder.path(u"Song.mp3"_s)}));
    EXPECT_EQ(TrackNamer::perform(plan), (Performed{.renamed = 4, .problems = {}}));
    EXPECT_EQ(folder.names(), (QStringList{u"Songbird.png"_s, u"Tune (Spotify).wav"_s, u"Tune lyrics.txt"_s,
                                           u"Tune.lrc"_s, u"Tune.mp3"_s}));
}

TEST(RenamePlan, anOverrideEqualToThePresentStemGivesARowWithoutChangesWhichPerformSkips)
{
    const TestFolder folder;
    fill(folder, {u"Song.mp3"_s});
    const QList<Rename> plan = TrackNamer::plan(folder.path(), u"live"_s, {}, {{u"Song"_s, u"Song"_s}});
    ASSERT_EQ(plan.size(), 1);
    EXPECT_FALSE(plan.first().changes());
    EXPECT_EQ(TrackNamer::perform(plan), Performed{});
}

TEST(Perform, aTargetThatAlreadyExistsOnDiskIsNotOverwritten)
{
    const TestFolder folder;
    fill(folder, {u"a.mp3"_s, u"a.png"_s, u"b.mp3"_s});
    const Rename row{.from = u"a"_s, .to = u"b"_s, .files = {folder.path(u"a.mp3"_s), folder.path(u"a.png"_s)}};
    EXPECT_EQ(TrackNamer::perform({row}), (Performed{.renamed = 1, .problems = {u"b.mp3 already exists"_s}}));
    EXPECT_EQ(folder.read(u"b.mp3"_s), "b.mp3");
    EXPECT_EQ(folder.read(u"a.mp3"_s), "a.mp3");
    EXPECT_EQ(folder.read(u"b.png"_s), "a.png");
}

TEST(Perform, aFileThatVanishedIsOneLineAndTheRestGoesOn)
{
    const TestFolder folder;
    fill(folder, {u"a.png"_s});
    const Rename row{.from = u"a"_s, .to = u"b"_s, .files = {folder.path(u"a.mp3"_s), folder.path(u"a.png"_s)}};
    EXPECT_EQ(TrackNamer::perform({row}),
              (Performed{.renamed = 1, .problems = {u"a.mp3: No such file or directory"_s}}));
    EXPECT_EQ(folder.names(), QStringList{u"b.png"_s});
}

TEST(Perform, ofAFileThatVanishedAndATargetThatExistsTheTargetIsTold)
{
    const TestFolder folder;
    fill(folder, {u"b.mp3"_s});
    const Rename row{.from = u"a"_s, .to = u"b"_s, .files = {folder.path(u"a.mp3"_s)}};
    EXPECT_EQ(TrackNamer::perform({row}), (Performed{.renamed = 0, .problems = {u"b.mp3 already exists"_s}}));
}

TEST(Perform, aChangeOfCaseIsAChange)
{
    const TestFolder folder;
    fill(folder, {u"song.mp3"_s});
    const Rename row{.from = u"song"_s, .to = u"Song"_s, .files = {folder.path(u"song.mp3"_s)}};
    EXPECT_EQ(TrackNamer::perform({row}), (Performed{.renamed = 1, .problems = {}}));
    EXPECT_EQ(folder.names(), QStringList{u"Song.mp3"_s});
}

} // namespace
} // namespace orvane
