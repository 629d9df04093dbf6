#include "tests/automation/AutomationFixture.h"
#include "tests/automation/LibraryFolder.h"
#include "tests/support/Sandbox.h"

#include <QRegularExpression>

#include <gmock/gmock.h>
#include <random>

/// A run over a library is killed at random moments: between any two things that it tells, at any time in between. What
/// stands then is whole, and the next run ends with every track complete.

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr int tracks = 5;

struct Moment
{
    int event = 0;
    qint64 microseconds = 0;
};

class LibraryKilled : public testing::Test
{
protected:
    LibraryKilled()
        : library(shortTracks(tracks))
    {
    }

    /// Microseconds from each event of a whole run to the next.
    static QList<qint64> gapsIn(const QString& said)
    {
        QList<qint64> gaps;
        qint64 last = -1;
        for (const QString& line : said.split(u'\n')) {
            if (!line.startsWith(u"event "))
                continue;
            const qint64 at = line.sliced(6).toLongLong();
            if (last >= 0)
                gaps.append(at - last);
            last = at;
        }
        return gaps;
    }

    Moment randomMoment(const QList<qint64>& gaps)
    {
        const int event = std::uniform_int_distribution<int>(0, static_cast<int>(gaps.size()) - 1)(random);
        return {.event = event, .microseconds = std::uniform_int_distribution<qint64>(0, gaps.at(event))(random)};
    }

    bool isKilledAt(const Moment& moment) const
    {
        return library.run({QString::number(moment.event), QString::number(moment.microseconds)}).killed;
    }

    /// Nothing stands under its final name but what an undisturbed run writes, before or after it renames and tags. The
    /// list of tracks is another one where a track is missing.
    void expectWholeFiles(bool areAllListed = true) const
    {
        EXPECT_EQ(library.faults(false), QStringList());
        const QMap<QString, QByteArray> found = library.contents();
        for (auto file = found.cbegin(); file != found.cend(); ++file) {
            const QString name = finalName(file.key());
            const bool mayDiffer = name.endsWith(u".mp3") || (!areAllListed && name == u"Tracklist.txt");
            if (isStaging(file.key()) || mayDiffer)
                continue;
            EXPECT_TRUE(whole.contains(name)) << file.key().toStdString();
            EXPECT_TRUE(file.value() == whole.value(name)) << file.key().toStdString();
        }
    }

    /// The folder is that of an undisturbed run, but for text and cover files under an old name. A rename that was cut
    /// short leaves a track's recording under the old stem and others of its files under the new: of two bases with
    /// one title the smaller counts, so these files are saved again beside it, and the rename finds their places taken.
    QStringList explainedDifferences() const
    {
        QStringList explained;
        const QMap<QString, QByteArray> found = library.contents();
        for (auto file = whole.cbegin(); file != whole.cend(); ++file)
            EXPECT_TRUE(found.value(file.key()) == file.value()) << file.key().toStdString();
        for (auto file = found.cbegin(); file != found.cend(); ++file) {
            if (whole.contains(file.key()))
                continue;
            const QString name = finalName(file.key());
            EXPECT_NE(name, file.key()) << "no rule explains " << file.key().toStdString();
            EXPECT_FALSE(name.endsWith(u".mp3")) << "a recording is there twice: " << file.key().toStdString();
            EXPECT_TRUE(file.value() == whole.value(name)) << file.key().toStdString();
            explained.append(u"%1 stays beside %2"_s.arg(file.key(), name));
        }
        return explained;
    }

    static QString finalName(const QString& name)
    {
        static const QRegularExpression number(u"^\\d{3} - "_s);
        return QString(name).remove(number);
    }

    /// Endings of the first track's files that have been moved when the move of that number, counted from 1, is not
    /// made.
    QStringList movedBefore(int move) const
    {
        const QString cover = u'.' + library.service.tracks().first().artworkExtension;
        return QStringList{u" lyrics.txt"_s, cover, u".lrc"_s, u".mp3"_s}.first(move - 1);
    }

    static bool isStaging(const QString& name)
    {
        return name.endsWith(u".part") || name.section(u'/', -1).startsWith(u'.');
    }

    LibraryFolder library;
    QMap<QString, QByteArray> whole;
    std::mt19937 random{seed()};
};

TEST_F(LibraryKilled, atAnyMomentTheNextRunEndsWithEveryTrackWhole)
{
    const ProgramOutcome undisturbed = library.run();
    ASSERT_EQ(undisturbed.exitCode, 0) << undisturbed.said.toStdString();
    whole = library.contents();
    ASSERT_EQ(whole.size(), tracks * 5 + 1);
    const QList<qint64> gaps = gapsIn(undisturbed.said);
    const int kills = rounds(12);
    int killed = 0;
    int withLeftovers = 0;
    QStringList differences;
    QSet<QStringList> states;
    for (int kill = 0; kill < kills; ++kill) {
        const Moment moment = randomMoment(gaps);
        const QString place =
            u"kill %1, %2 µs after event %3"_s.arg(kill + 1).arg(moment.microseconds).arg(moment.event);
        SCOPED_TRACE(place.toStdString());
        library.empty();
        killed += isKilledAt(moment) ? 1 : 0;
        const QStringList names = library.contents().keys();
        states.insert(names);
        withLeftovers += std::ranges::any_of(names, isStaging) ? 1 : 0;
        expectWholeFiles();
        const ProgramOutcome next = library.run();
        EXPECT_EQ(next.exitCode, 0) << next.said.toStdString();
        EXPECT_EQ(library.faults(true), QStringList());
        for (const QString& difference : explainedDifferences())
            differences.append(place + u": "_s + difference);
    }
    std::printf("%d moments: %d killed, in %d states of the folder, %d with a temporary file\n", kills, killed,
                static_cast<int>(states.size()), withLeftovers);
    for (const QString& difference : differences)
        std::printf("  %s\n", qPrintable(difference));
    // A moment behind the last event may find the program gone.
    EXPECT_GE(killed * 4, kills * 3);
    EXPECT_GE(static_cast<int>(states.size()), std::min(kills / 3, 20));
}

TEST_F(LibraryKilled, inTheMiddleOfARenameTheNextRunKeepsBothOfWhatStandsTwice)
{
    ASSERT_EQ(library.run().exitCode, 0);
    whole = library.contents();
    const QString first = library.service.tracks().first().title;
    for (const int move : {1, 2, 3, 4}) {
        SCOPED_TRACE(move);
        library.empty();
        EXPECT_TRUE(library.runBroken({.name = u"renameat2"_s, .number = move}, u"signal=KILL"_s).killed);
        expectWholeFiles();
        EXPECT_EQ(library.run().exitCode, 0);
        EXPECT_EQ(library.faults(true), QStringList());
        // The first files of the track stand under the new stem, the recording as the last one does not.
        QStringList expected;
        for (const QString& ending : movedBefore(move))
            expected.append(u"001 - %1%2 stays beside %1%2"_s.arg(first, ending));
        EXPECT_EQ(explainedDifferences(), expected);
    }
}

TEST_F(LibraryKilled, aFolderThatIsFullOrReadOnlyInTheDownloadIsSaidAndTheNextRunFinishes)
{
    ASSERT_EQ(library.run().exitCode, 0);
    whole = library.contents();
    const QString title = library.service.tracks().at(1).title;
    const QString partial = u"002 - %1.mp3.part"_s.arg(title);
    for (const bool isFull : {true, false}) {
        SCOPED_TRACE(isFull);
        library.empty();
        const ProgramOutcome outcome = isFull ? library.runBrokenAt(partial, u"write,pwrite64"_s, u"error=ENOSPC"_s)
                                              : library.runBrokenAt(partial, u"openat"_s, u"error=EROFS"_s);
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_TRUE(outcome.said.contains(u"MP3 failed for %1: "_s.arg(title))) << outcome.said.toStdString();
        EXPECT_TRUE(outcome.said.contains(isFull ? u"No space left on device"_s : u"Read-only file system"_s));
        EXPECT_FALSE(outcome.said.contains(u"Tagging failed"_s));
        expectWholeFiles(false);
        EXPECT_FALSE(library.contents().contains(title + u".mp3"_s));
        EXPECT_EQ(library.run().exitCode, 0);
        EXPECT_EQ(library.faults(true), QStringList());
    }
}

} // namespace
} // namespace orvane::test
