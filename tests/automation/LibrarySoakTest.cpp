#include "tests/automation/AutomationFixture.h"
#include "tests/automation/LibraryFolder.h"
#include "tests/support/Sandbox.h"

#include <gmock/gmock.h>
#include <random>

/// A large library goes through the chain while every twentieth file comes with a fault of the network.

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using Kind = demo::Fault::Kind;

/// The memory at that many tracks of a stage.
struct Resident
{
    int stage = 0;
    int done = 0;
    int kibibytes = 0;
};

QList<Resident> residentIn(const QString& said)
{
    QList<Resident> found;
    for (const QString& line : said.split(u'\n')) {
        const QStringList words = line.split(u' ');
        if (words.size() == 4 && words.first() == u"resident")
            found.append({.stage = words.at(1).toInt(), .done = words.at(2).toInt(), .kibibytes = words.at(3).toInt()});
    }
    return found;
}

class LibrarySoak : public testing::Test
{
protected:
    /// A fault that the program can tell from an answer that is whole.
    demo::Fault randomFault(const QString& where)
    {
        static const QList<int> statuses{500, 503, 429, 404};
        static const QList<Kind> kinds{Kind::status,
                                       Kind::status,
                                       Kind::status,
                                       Kind::resetInBody,
                                       Kind::chunkedCut,
                                       Kind::emptyBody,
                                       Kind::notHttp,
                                       Kind::closeBeforeAnswer,
                                       Kind::gzipCut,
                                       Kind::chunkedBadSize,
                                       Kind::contentLengthTooLarge};
        demo::Fault fault;
        fault.kind = kinds.at(pick(kinds.size()));
        fault.status = statuses.at(pick(statuses.size()));
        fault.where = where;
        // Up to more often than anybody tries.
        fault.times = 1 + pick(8);
        return fault;
    }

    int pick(qsizetype count) { return std::uniform_int_distribution<int>(0, static_cast<int>(count) - 1)(random); }

    /// Faults for one file in twenty, in any order. Gives how many.
    int scriptFaults(LibraryFolder& library)
    {
        int faulty = 0;
        for (const demo::Track& track : library.service.tracks()) {
            for (const QString& file : {u'/' + track.id + u".mp3"_s, u"/image/"_s + track.id}) {
                if (pick(20) != 0)
                    continue;
                library.service.script(randomFault(file));
                ++faulty;
            }
        }
        return faulty;
    }

    /// Each stage keeps its memory once its first tracks are through.
    void expectFlat(const QList<Resident>& resident, int settled)
    {
        for (const Stage stage : {Stage::download, Stage::rename, Stage::tag, Stage::master}) {
            int base = 0;
            int most = 0;
            for (const Resident& at : resident) {
                if (at.stage != indexOf(stage) || at.done < settled)
                    continue;
                base = base == 0 ? at.kibibytes : base;
                most = std::max(most, at.kibibytes);
            }
            ASSERT_GT(base, 0);
            std::printf("%s: resident memory after %d tracks %.1f MB, at most %.1f MB from there on\n",
                        qPrintable(nameOf(stage)), settled, base / 1024.0, most / 1024.0);
            EXPECT_LE(most - base, 20 * 1024) << nameOf(stage).toStdString();
        }
    }

    std::mt19937 random{seed()};
};

TEST_F(LibrarySoak, aLargeLibraryWithFaultsLeavesNothingHalfWrittenAndNoMemoryBehind)
{
    const int tracks = rounds(60);
    LibraryFolder library(shortTracks(tracks));
    const int faulty = scriptFaults(library);
    const ProgramOutcome first = library.run();
    ASSERT_FALSE(first.killed) << first.said.right(2000).toStdString();
    EXPECT_EQ(first.exitCode, 0);
    EXPECT_EQ(library.faults(false), QStringList());
    const auto isTemporary = [](const QString& name) { return name.endsWith(u".part") || name.contains(u"/."); };
    EXPECT_TRUE(std::ranges::none_of(library.contents().keys(), isTemporary));
    expectFlat(residentIn(first.said), std::min(200, tracks / 3));
    const auto whole = [&library] { return static_cast<int>(library.contents().size()); };
    const int complete = 5 * tracks + 1;
    std::printf("%d tracks, %d files with a fault: %d of %d files after the first run\n", tracks, faulty, whole(),
                complete);
    EXPECT_LE(whole(), complete);

    library.service.clearFaults();
    const ProgramOutcome second = library.run();
    EXPECT_EQ(second.exitCode, 0);
    EXPECT_EQ(library.faults(true), QStringList());
    EXPECT_EQ(whole(), complete);
}

} // namespace
} // namespace orvane::test
