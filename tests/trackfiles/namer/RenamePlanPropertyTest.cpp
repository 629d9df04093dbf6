#include "tests/support/Sandbox.h"
#include "tests/support/TestFolder.h"
#include "tests/trackfiles/HostileNames.h"
#include "trackfiles/namer/NameRules.h"
#include "trackfiles/namer/RenamePlan.h"

#include <QDir>
#include <QFile>
#include <QSet>

#include <dirent.h>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <optional>

/// What holds for a plan whatever the names, over a million of them in an ordinary build.

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;
using TrackNamer::Performed;
using TrackNamer::Rename;

constexpr int tracksOfARound = 1000;
constexpr int rounds = ORVANE_RENAME_ROUNDS;

/// Where the names of a round come from.
enum class Naming
{
    Invented,
    Typed,
    PresentNames
};

/// A name as a folder can hold it.
QString asFileName(QString name)
{
    name.replace(u'/', u'_').remove(QChar::Null);
    return QFile::decodeName(QFile::encodeName(name));
}

Library::Entry trackNamed(const QString& name)
{
    return {.name = name,
            .path = u"/music/"_s + name + u".mp3"_s,
            .files = {{Library::Asset::audio, {u"/music/"_s + name + u".mp3"_s, u"/music/"_s + name + u".lrc"_s}}}};
}

/// A thousand names, each once.
QStringList presentNames(Naming naming, const QStringList& hostile)
{
    QStringList names;
    QSet<QString> used;
    for (int index = 0; index < tracksOfARound; ++index) {
        QString name = naming == Naming::PresentNames ? asFileName(hostile[index]) : QString::number(index);
        if (used.contains(name))
            name += u'#' + QString::number(index);
        used.insert(name);
        names.append(name);
    }
    return names;
}

QStringList hostileNames(int round, std::mt19937& random)
{
    QStringList names = round < 3 ? test::naughtyNames() : QStringList();
    while (names.size() < tracksOfARound)
        names.append(test::randomName(random));
    return names;
}

QList<Rename> planOf(QList<Library::Entry> tracks, const QString& pattern, Naming naming, const QStringList& hostile)
{
    QHash<QString, QString> typed;
    for (qsizetype index = 0; naming == Naming::Typed && index < tracks.size(); ++index)
        typed.insert(QString::number(index), hostile[index]);
    const auto invented = naming == Naming::Invented ? std::optional(hostile) : std::nullopt;
    return TrackNamer::planFor(std::move(tracks), pattern, invented, typed);
}

void expectToStayIn(const QString& folder, const Rename& row)
{
    for (const QString& path : row.files) {
        const QString target = folder + row.to + path.sliced(folder.size() + row.from.size());
        ASSERT_EQ(QDir::cleanPath(target), target);
        ASSERT_EQ(target.lastIndexOf(u'/') + 1, folder.size()) << target.toStdString();
        ASSERT_FALSE(target.contains(QChar::Null));
        ASSERT_LE(target.size() - folder.size(), 255);
    }
}

void expectSound(const QList<Rename>& plan)
{
    QSet<QString> used;
    for (const Rename& row : plan) {
        ASSERT_FALSE(row.to.isEmpty()) << "of " << row.from.toStdString();
        ASSERT_NE(row.to, u"."_s);
        ASSERT_NE(row.to, u".."_s);
        ASSERT_FALSE(used.contains(row.to.toLower())) << row.to.toStdString();
        used.insert(row.to.toLower());
        ASSERT_NO_FATAL_FAILURE(expectToStayIn(u"/music/"_s, row));
    }
}

TEST(RenamePlanProperty, aMillionHostileNamesNeverLeaveTheFolderNeverMeetNeverVanishAndAreTheSameOnEveryRun)
{
    std::mt19937 random(test::seed());
    const auto patterns = TrackNamer::patterns();
    for (int round = 0; round < rounds; ++round) {
        SCOPED_TRACE(round);
        const auto naming = static_cast<Naming>(round % 3);
        const QString& pattern = patterns[static_cast<std::size_t>(round / 3) % patterns.size()].id;
        const QStringList hostile = hostileNames(round, random);
        QList<Library::Entry> tracks;
        for (const QString& name : presentNames(naming, hostile))
            tracks.append(trackNamed(name));
        const QList<Rename> plan = planOf(tracks, pattern, naming, hostile);
        ASSERT_EQ(plan.size(), tracksOfARound);
        ASSERT_NO_FATAL_FAILURE(expectSound(plan));
        if (round % 4 == 0) {
            std::shuffle(tracks.begin(), tracks.end(), random);
            ASSERT_EQ(planOf(tracks, pattern, naming, hostile), plan);
        }
    }
}

struct CloseFolder
{
    void operator()(DIR* folder) const { ::closedir(folder); }
};

/// Each name in a folder, with the number of the file that it stands for.
std::map<QByteArray, ino_t> filesIn(const QString& path)
{
    std::map<QByteArray, ino_t> files;
    const std::unique_ptr<DIR, CloseFolder> folder(::opendir(QFile::encodeName(path).constData()));
    while (const dirent* entry = ::readdir(folder.get()))
        files.emplace(entry->d_name, entry->d_ino);
    return files;
}

/// The plan that undoes another one: the last step first.
QList<Rename> inverse(QList<Rename> plan)
{
    std::ranges::reverse(plan);
    for (Rename& row : plan) {
        std::ranges::reverse(row.files);
        for (QString& path : row.files) {
            const qsizetype name = path.lastIndexOf(u'/') + 1;
            path = path.first(name) + row.to + path.sliced(name + row.from.size());
        }
        std::swap(row.from, row.to);
    }
    return plan;
}

int filesThatChange(const QList<Rename>& plan)
{
    int count = 0;
    for (const Rename& row : plan)
        count += row.changes() ? static_cast<int>(row.files.size()) : 0;
    return count;
}

/// Files whose own names are hostile already.
void fillWithHostileNames(const test::TestFolder& folder)
{
    for (const QString& name : test::naughtyNames()) {
        const QString stem = asFileName(name).left(60);
        folder.write(stem + u".mp3"_s, {});
        folder.write(stem + u" lyrics.lrc"_s, {});
    }
    for (int index = 0; folder.names().size() < tracksOfARound; ++index)
        folder.write(QString::number(index) + u".mp3"_s, {});
}

void expectToBeRestoredByTheInverse(const QString& folder, const QList<Rename>& plan)
{
    const std::map<QByteArray, ino_t> before = filesIn(folder);
    const Performed there = TrackNamer::perform(plan);
    ASSERT_EQ(there.renamed + there.problems.size(), filesThatChange(plan));
    ASSERT_GT(there.renamed, tracksOfARound / 2);
    ASSERT_EQ(filesIn(folder).size(), before.size());
    const Performed back = TrackNamer::perform(inverse(plan));
    ASSERT_EQ(back.renamed, there.renamed) << back.problems.join(u'\n').toStdString();
    ASSERT_EQ(filesIn(folder), before);
}

TEST(RenamePlanProperty, aMillionHostileNamesCarriedOutAndTheirInverseRestoreTheFolder)
{
    constexpr int roundsInAFolder = 100;
    std::mt19937 random(test::seed());
    std::optional<test::TestFolder> folder;
    int named = 0;
    for (int round = 0; named < rounds * tracksOfARound; ++round) {
        SCOPED_TRACE(round);
        if (round % roundsInAFolder == 0) {
            folder.emplace();
            fillWithHostileNames(*folder);
        }
        const QList<Rename> plan = TrackNamer::plan(folder->path(), u"clean"_s, hostileNames(round, random));
        named += static_cast<int>(plan.size());
        ASSERT_NO_FATAL_FAILURE(expectToBeRestoredByTheInverse(folder->path(), plan));
        // Now and then the walk goes on from the new names.
        if (round % 10 == 0)
            TrackNamer::perform(plan);
    }
}

} // namespace
} // namespace orvane
