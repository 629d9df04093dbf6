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

int filesThatChange(const QList<Rename>& plan)
{
    int count = 0;
    for (const Rename& row : plan)
        count += row.changes() ? static_cast<int>(row.files.size()) : 0;
    return count;
}

QList<Rename> inverse(QList<Rename> plan)
{
    for (Rename& row : plan) {
        for (QString& path : row.files) {
            const qsizetype name = path.lastIndexOf(u'/') + 1;
            path = path.first(name) + row.to + path.sliced(name + row.from.size());
        }
        std::swap(row.from, row.to);
    }
    return plan;
}

TEST(RenamePlan, twoTracksThatComeOutAsOceanGetANumberAndCaseIsNoDifference)
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

TEST(RenamePlan, aPipeInPlaceOfTheLyricsIsNeverOpened)
{
    const TestFolder folder;
    fill(folder, {u"old.mp3"_s});
    ASSERT_EQ(::mkfifo(QFile::encodeName(folder.path(u"old.txt"_s)).constData(), 0600), 0);
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

TEST(RenamePlan, aRowThatDoesNotChangeIsInThePlanAndIsNotCarriedOut)
{
    const TestFolder folder;
    fill(folder, {u"Song.mp3"_s});
    const QList<Rename> plan = TrackNamer::plan(folder.path(), u"live"_s, {}, {{u"Song"_s, u"Song"_s}});
    ASSERT_EQ(plan.size(), 1);
    EXPECT_FALSE(plan.first().changes());
    EXPECT_EQ(TrackNamer::perform(plan), Performed{});
}

TEST(Perform, aTargetThatExistsIsNotOverwritten)
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

TEST(Perform, aFolderWithoutPermissionKeepsItsFilesAndSaysSoForEach)
{
    const TestFolder folder;
    fill(folder, {u"locked/a.mp3"_s, u"locked/a.png"_s});
    const QByteArray locked = QFile::encodeName(folder.path(u"locked"_s));
    ::chmod(locked.constData(), 0555);
    const Rename row{
        .from = u"a"_s, .to = u"b"_s, .files = {folder.path(u"locked/a.mp3"_s), folder.path(u"locked/a.png"_s)}};
    const int answer = test::inChild([&row] {
        test::becomeUnprivileged();
        const Performed expected{.renamed = 0,
                                 .problems = {u"a.mp3: Permission denied"_s, u"a.png: Permission denied"_s}};
        return TrackNamer::perform({row}) == expected ? 0 : 1;
    });
    ::chmod(locked.constData(), 0755);
    EXPECT_EQ(answer, 0);
}

TEST(Perform, aChangeOfCaseIsAChange)
{
    const TestFolder folder;
    fill(folder, {u"song.mp3"_s});
    const Rename row{.from = u"song"_s, .to = u"Song"_s, .files = {folder.path(u"song.mp3"_s)}};
    EXPECT_EQ(TrackNamer::perform({row}), (Performed{.renamed = 1, .problems = {}}));
    EXPECT_EQ(folder.names(), QStringList{u"Song.mp3"_s});
}

/// Names that programs have fallen over: each may come as a title.
const QStringList& naughtyNames()
{
    static const QStringList names{u"../../x"_s,
                                   u"/etc/passwd"_s,
                                   u""_s,
                                   u"."_s,
                                   u".."_s,
                                   u"..."_s,
                                   u" "_s,
                                   u"\u3000"_s,
                                   u"CON"_s,
                                   u"con.mp3"_s,
                                   u"NUL"_s,
                                   u"a\u0000b"_s,
                                   u"line\nbreak"_s,
                                   u"\u202Egnp.exe"_s,
                                   u"\u2066isolated"_s,
                                   QString(QChar(0xD800)),
                                   QString(QChar(0xDC00)),
                                   u"👨‍👩‍👧‍👦"_s.repeated(100),
                                   u"e\u0301"_s,
                                   u"é"_s,
                                   u"<b>bold</b>"_s,
                                   u"%s%n%@"_s,
                                   u"-rf"_s,
                                   u"~"_s,
                                   u"$HOME"_s,
                                   u"; rm"_s,
                                   u"\uFEFFbom"_s,
                                   u"ﬀ"_s,
                                   u"İ"_s,
                                   u"ß"_s,
                                   u"ẞ"_s,
                                   u"Ǆ"_s,
                                   u"name (2)"_s,
                                   u"name"_s,
                                   u"NAME"_s,
                                   u"x"_s.repeated(5000),
                                   u"न"_s.repeated(300),
                                   u"a\u0301\u0302\u0303"_s.repeated(200)};
    return names;
}

QString randomName(std::mt19937& random)
{
    static const QString alphabet =
        u"aAbB01 .-_()[]/\\:*?\"<>|,;!'&%#\t\n\u0301\u00A0\u200D\u202E\u00DF\u0130éÉ漢字👩🎵\uFEFF"_s;
    std::uniform_int_distribution<qsizetype> length(0, 40);
    std::uniform_int_distribution<qsizetype> place(0, alphabet.size() - 1);
    QString name;
    for (qsizetype count = length(random); count > 0; --count)
        name.append(alphabet[place(random)]);
    return name;
}

void expectSound(const QList<Rename>& plan)
{
    QSet<QString> used;
    for (const Rename& row : plan) {
        ASSERT_FALSE(row.to.isEmpty());
        ASSERT_FALSE(row.to.contains(u'/')) << row.to.toStdString();
        ASSERT_FALSE(row.to.contains(QChar::Null));
        ASSERT_NE(row.to, u"."_s);
        ASSERT_NE(row.to, u".."_s);
        ASSERT_LE(row.to.toUtf8().size(), 220);
        ASSERT_FALSE(used.contains(row.to.toLower())) << row.to.toStdString();
        used.insert(row.to.toLower());
    }
}

TEST(RenamePlanProperty, aMillionHostileNamesStayInTheFolderAndApart)
{
    constexpr int tracks = 1000;
    constexpr int rounds = 1000;
    const TestFolder folder;
    for (int index = 0; index < tracks; ++index)
        folder.write(QString::number(index) + u".mp3"_s, "x");
    const QList<Library::Entry> entries = Library::read(folder.path()).tracks();
    std::mt19937 random(test::seed());
    for (int round = 0; round < rounds; ++round) {
        QStringList invented = round == 0 ? naughtyNames() : QStringList();
        while (invented.size() < tracks)
            invented.append(randomName(random));
        const QList<Rename> plan = TrackNamer::planFor(entries, u"clean"_s, invented);
        ASSERT_EQ(plan.size(), tracks);
        ASSERT_NO_FATAL_FAILURE(expectSound(plan));
        if (round % 100 == 0) {
            ASSERT_EQ(plan, TrackNamer::plan(folder.path(), u"clean"_s, invented)) << "the same on every run";
        }
    }
}

TEST(RenamePlanProperty, carryingOutAPlanAndItsInverseRestoresTheFolder)
{
    std::mt19937 random(test::seed());
    for (int round = 0; round < 20; ++round) {
        const TestFolder folder;
        QStringList invented = naughtyNames();
        for (int index = 0; index < 100; ++index) {
            const QString stem = u"track_no_"_s + QString::number(index);
            fill(folder, {stem + u".mp3"_s, stem + u" lyrics.txt"_s, stem + u" (Tidal).wav"_s});
            invented.append(randomName(random));
        }
        const QStringList before = folder.names();
        const QList<Rename> plan = TrackNamer::plan(folder.path(), u"clean"_s, invented);
        const Performed there = TrackNamer::perform(plan);
        ASSERT_GT(there.renamed, 200);
        ASSERT_EQ(there.renamed, filesThatChange(plan)) << there.problems.join(u'\n').toStdString();
        ASSERT_NE(folder.names(), before);
        const Performed back = TrackNamer::perform(inverse(plan));
        ASSERT_EQ(back.renamed, there.renamed) << back.problems.join(u'\n').toStdString();
        ASSERT_EQ(folder.names(), before);
        for (const QString& name : before)
            ASSERT_EQ(folder.read(name), name.toUtf8());
    }
}

} // namespace
} // namespace orvane
