#include "suno/LibraryExport.h"

#include "demonstration/service/StandInService.h"
#include "main/App/Preferences.h"
#include "main/App/Session.h"
#include "platform/network/HttpClient.h"
#include "suno/Engine.h"
#include "tests/support/TestClock.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <functional>
#include <gmock/gmock.h>
#include <memory>
#include <ostream>

namespace orvane {

void PrintTo(const LogLevel& level, std::ostream* out)
{
    *out << (level == LogLevel::info ? "info" : level == LogLevel::success ? "success" : "error");
}

} // namespace orvane

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using demo::Fault;
using demo::StandInService;
using Ending = ExportResult::Ending;

struct Line
{
    QString message;
    LogLevel level = LogLevel::info;

    bool operator==(const Line&) const = default;
};

void PrintTo(const Line& line, std::ostream* out)
{
    *out << line.message.toStdString() << " @";
    PrintTo(line.level, out);
}

Line info(const QString& message)
{
    return {message, LogLevel::info};
}

Line success(const QString& message)
{
    return {message, LogLevel::success};
}

Line error(const QString& message)
{
    return {message, LogLevel::error};
}

const Line stopping = error(u"Stopping…"_s);
const Line stopped = error(u"Stopped. Anything already saved was kept — starting again resumes from here."_s);
const Line incomplete = error(u"Incomplete — Suno stopped returning pages, so this is only part of the library. Run it "
                              "again to pick up the rest."_s);
const Line nothingTicked = error(u"Nothing selected to download — tick at least one asset."_s);
const Line noTracksRead = error(u"No tracks read — Suno returned an error before any page came back."_s);

const AssetSet everything{Asset::audio, Asset::lyrics, Asset::lrc, Asset::artwork};

/// The next `times` requests whose target holds `where` are answered with `status`.
Fault answering(int status, const QString& where, int times = 1)
{
    Fault fault;
    fault.where = where;
    fault.times = times;
    fault.status = status;
    return fault;
}

/// The next `times` requests whose target holds `where` are accepted and never answered.
Fault silent(const QString& where, int times = 1)
{
    Fault fault;
    fault.kind = Fault::Kind::silence;
    fault.where = where;
    fault.times = times;
    return fault;
}

/// A library of `count` tracks on pages of five, with recordings of a few bytes.
demo::LibraryOptions smallLibrary(int count)
{
    demo::LibraryOptions options;
    options.tracks = count;
    options.pageSize = 5;
    options.assetBytes = 2000;
    return options;
}

class LibraryExportTest : public testing::Test
{
protected:
    explicit LibraryExportTest(int tracks = 7)
        : service(smallLibrary(tracks))
    {
        service.setTokenLifetime(1h);
        session.setDestination(QUrl::fromLocalFile(folder()));
        session.setToken(service.currentToken());
        QObject::connect(exporter.get(), &LibraryExport::logged, exporter.get(),
                         [this](const QString& message, LogLevel level) {
                             lines.append({message, level});
                             if (onLine)
                                 onLine(lines.last());
                         });
        QObject::connect(exporter.get(), &LibraryExport::progressed, exporter.get(),
                         [this](const ExportProgress& progress) {
                             steps.append(progress);
                             if (onStep)
                                 onStep(progress);
                         });
        QObject::connect(exporter.get(), &LibraryExport::ended, exporter.get(),
                         [this](const ExportResult& result) { results.append(result); });
    }

    QString folder() const { return home.filePath(u"Export/deep"_s); }

    QStringList files() const { return QDir(folder()).entryList(QDir::Files | QDir::Hidden); }

    QStringList recordings() const { return QDir(folder()).entryList({u"*.mp3"_s}, QDir::Files); }

    bool waitForEnd(int runs = 1)
    {
        QSignalSpy ended(exporter.get(), &LibraryExport::ended);
        while (results.size() < runs && ended.wait(30'000)) {
        }
        return results.size() == runs;
    }

    void runToTheEnd(const AssetSet& assets = everything, const QString& workspace = {})
    {
        const auto runs = static_cast<int>(results.size());
        exporter->toggle({.workspace = workspace, .assets = assets});
        ASSERT_TRUE(waitForEnd(runs + 1));
    }

    void stopAtLine(const QString& message)
    {
        onLine = [this, message](const Line& line) {
            if (line.message == message)
                exporter->toggle({});
        };
    }

    /// Requests for anything but the pages of the library.
    QStringList assetRequests() const
    {
        QStringList targets;
        for (const demo::SeenRequest& request : service.requests()) {
            const QString target = QString::fromUtf8(request.target);
            if (!target.startsWith(u"/api/"))
                targets.append(target);
        }
        return targets;
    }

    StandInService service;
    QTemporaryDir home;
    Preferences preferences{home.filePath(u"preferences.json"_s)};
    Session session{preferences};
    HttpClient client;
    TestClock clock;
    Engine engine{client, clock, service.endpoints()};
    std::unique_ptr<LibraryExport> exporter = std::make_unique<LibraryExport>(session, engine, clock);

    QList<Line> lines;
    QList<ExportProgress> steps;
    QList<ExportResult> results;
    std::function<void(const Line&)> onLine;
    std::function<void(const ExportProgress&)> onStep;
};

/// The lines of reading seven tracks on pages of five.
QList<Line> readingOfSeven()
{
    return {info(u"Querying page 1…"_s), info(u"Page 1: 5 tracks (total 5)"_s),
            info(u"Querying page 2…"_s), info(u"Page 2: 2 tracks (total 7)"_s),
            info(u"Querying page 3…"_s), success(u"Found 7 tracks."_s)};
}

TEST_F(LibraryExportTest, aWholeRunSavesEverythingAndSaysSo)
{
    runToTheEnd();
    EXPECT_EQ(lines, readingOfSeven() << success(u"Done — 7 tracks saved."_s));
    EXPECT_EQ(recordings().size(), 7);
    EXPECT_EQ(QDir(folder()).entryList({u"*.lrc"_s}).size(), 7);
    EXPECT_EQ(results.first(), (ExportResult{.ending = Ending::done,
                                             .tracks = 7,
                                             .problems = 0,
                                             .sentence = u"Done — 7 tracks saved."_s,
                                             .folder = folder()}));
}

TEST_F(LibraryExportTest, theFilesHoldWhatTheServiceServed)
{
    demo::LibraryOptions composed;
    composed.tracks = 3;
    composed.shortestSeconds = 1;
    composed.longestSeconds = 2;
    service.setLibrary(composed);
    runToTheEnd({Asset::audio});
    QList<QByteArray> onDisk;
    for (const QString& name : recordings()) {
        QFile file(folder() + u'/' + name);
        ASSERT_TRUE(file.open(QFile::ReadOnly));
        onDisk.append(file.readAll());
    }
    QList<QByteArray> served;
    for (const demo::Track& track : service.tracks())
        served.append(service.audioOf(track.id));
    EXPECT_THAT(onDisk, testing::UnorderedElementsAreArray(served));
}

TEST_F(LibraryExportTest, everyTrackIsAnnouncedInTheOrderOfTheLibraryAndThenTheEnd)
{
    runToTheEnd({Asset::lrc});
    ASSERT_EQ(steps.size(), 8);
    for (int index = 0; index < 7; ++index) {
        EXPECT_EQ(steps.at(index).done, index);
        EXPECT_EQ(steps.at(index).count, 7);
        EXPECT_TRUE(QFile::exists(folder() + u'/' + steps.at(index).base + u".lrc"_s)) << index;
    }
    EXPECT_EQ(steps.last(), (ExportProgress{.done = 7, .count = 7, .base = {}, .timeLeft = {}}));
}

TEST_F(LibraryExportTest, theSessionIsBusyFromTheStartToTheEnd)
{
    QStringList order;
    QObject::connect(exporter.get(), &LibraryExport::runningChanged, exporter.get(), [&](bool running) {
        EXPECT_EQ(session.downloadInProgress, running);
        EXPECT_EQ(exporter->isRunning(), running);
        order.append(running ? u"begins"_s : u"rests"_s);
    });
    QObject::connect(exporter.get(), &LibraryExport::ended, exporter.get(), [&] { order.append(u"ended"_s); });
    QObject::connect(&session, &Session::filesChanged, exporter.get(), [&] {
        EXPECT_TRUE(session.downloadInProgress);
        order.append(u"files"_s);
    });
    runToTheEnd();
    EXPECT_EQ(order, (QStringList{u"begins"_s, u"files"_s, u"rests"_s, u"ended"_s}));
}

TEST_F(LibraryExportTest, aSecondRunAsksForNoFileThatIsThere)
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

TEST_F(LibraryExportTest, coversAreNotAskedForTwice)
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

TEST_F(LibraryExportTest, aSecondRunKeepsTheNumberThatATrackHadBeforeNewOnesCame)
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

TEST_F(LibraryExportTest, withoutATokenItSaysSoAndChangesNothing)
{
    session.setToken({});
    service.clearRequests();
    exporter->toggle({.workspace = {}, .assets = everything});
    EXPECT_EQ(lines, QList<Line>{error(u"No Suno session yet — open the Suno tab and sign in first."_s)});
    EXPECT_FALSE(exporter->isRunning());
    EXPECT_FALSE(session.downloadInProgress);
    EXPECT_FALSE(QFile::exists(folder()));
}

TEST_F(LibraryExportTest, whileTheAutomaterRunsItSaysSoAndChangesNothing)
{
    session.automationInProgress = true;
    exporter->toggle({.workspace = {}, .assets = everything});
    EXPECT_EQ(lines, QList<Line>{error(u"The Automater is running. Let it finish, or stop it there first."_s)});
    EXPECT_FALSE(exporter->isRunning());
    EXPECT_FALSE(session.downloadInProgress);
    EXPECT_TRUE(session.automationInProgress);
    EXPECT_FALSE(QFile::exists(folder()));
}

TEST_F(LibraryExportTest, aMissingTokenIsToldOfBeforeTheAutomater)
{
    session.setToken({});
    session.automationInProgress = true;
    exporter->toggle({});
    EXPECT_EQ(lines, QList<Line>{error(u"No Suno session yet — open the Suno tab and sign in first."_s)});
}

TEST_F(LibraryExportTest, aFolderThatCannotBeMadeEndsItBeforeAPageIsRead)
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

TEST_F(LibraryExportTest, aFolderThatTakesNoFileEndsItBeforeAPageIsRead)
{
    ASSERT_TRUE(QDir().mkpath(folder() + u"/.orvane-write-test"_s));
    service.clearRequests();
    runToTheEnd();
    EXPECT_EQ(lines, QList<Line>{error(u"deep: Is a directory"_s)});
    EXPECT_TRUE(service.requests().isEmpty());
}

TEST_F(LibraryExportTest, theWriteTestLeavesNothingBehind)
{
    runToTheEnd({});
    EXPECT_TRUE(QDir(folder()).exists());
    EXPECT_EQ(files(), QStringList());
}

TEST_F(LibraryExportTest, whatAKilledRunLeftIsRemoved)
{
    ASSERT_TRUE(QDir().mkpath(folder()));
    QFile leftover(folder() + u"/001 - Song.mp3.part"_s);
    ASSERT_TRUE(leftover.open(QFile::WriteOnly));
    leftover.close();
    runToTheEnd({});
    EXPECT_EQ(files(), QStringList());
}

TEST_F(LibraryExportTest, aRejectedSessionOnTheFirstPageIsSaidInItsOwnWords)
{
    session.setToken(u"worthless"_s);
    QSignalSpy filesChanged(&session, &Session::filesChanged);
    runToTheEnd();
    EXPECT_EQ(lines, (QList<Line>{info(u"Querying page 1…"_s),
                                  error(u"Suno rejected the session (HTTP 401). Open the Suno tab and sign in "
                                        "again."_s)}));
    EXPECT_EQ(results.first().ending, Ending::failed);
    EXPECT_EQ(results.first().sentence, lines.last().message);
    EXPECT_FALSE(exporter->isRunning());
    EXPECT_EQ(filesChanged.count(), 0);
}

TEST_F(LibraryExportTest, anotherRunCanStartAfterARejectedSession)
{
    session.setToken(u"worthless"_s);
    runToTheEnd();
    session.setToken(service.currentToken());
    lines.clear();
    runToTheEnd();
    EXPECT_EQ(lines.last(), success(u"Done — 7 tracks saved."_s));
}

TEST_F(LibraryExportTest, aPageThatIsNoJsonEndsItWithTheErrorsOwnSentence)
{
    Fault rubbish;
    rubbish.kind = Fault::Kind::badJson;
    rubbish.where = u"page=1"_s;
    service.script(rubbish);
    runToTheEnd();
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines.last().level, LogLevel::error);
    EXPECT_FALSE(lines.last().message.isEmpty());
    EXPECT_EQ(results.first().ending, Ending::failed);
    EXPECT_FALSE(session.downloadInProgress);
}

TEST_F(LibraryExportTest, nothingTickedIsSaidAfterTheTracksWereFound)
{
    service.clearRequests();
    runToTheEnd({});
    EXPECT_EQ(lines, readingOfSeven() << nothingTicked);
    EXPECT_EQ(results.first().ending, Ending::nothingTicked);
    EXPECT_EQ(assetRequests(), QStringList());
    EXPECT_TRUE(steps.isEmpty());
}

TEST_F(LibraryExportTest, aServerThatGivesNoPageAtAllIsToldApartFromAnEmptyLibrary)
{
    service.script(answering(500, u"/api/feed"_s, 100));
    runToTheEnd();
    EXPECT_EQ(lines, (QList<Line>{info(u"Querying page 1…"_s),
                                  info(u"Page 1 returned HTTP 500 (rate limited); retrying in 1s"_s),
                                  info(u"Page 1 returned HTTP 500 (rate limited); retrying in 1s"_s),
                                  info(u"Page 1 returned HTTP 500 (rate limited); retrying in 3s"_s),
                                  error(u"Page 1 returned HTTP 500; keeping the 0 tracks read so far."_s),
                                  error(u"Found 0 tracks."_s), noTracksRead}));
    EXPECT_EQ(results.first().ending, Ending::noTracks);
}

TEST_F(LibraryExportTest, aPartialReadIsRedAndItsTracksAreSavedAllTheSame)
{
    service.script(answering(404, u"page=2"_s, 1));
    QSignalSpy filesChanged(&session, &Session::filesChanged);
    runToTheEnd();
    EXPECT_EQ(lines, (QList<Line>{info(u"Querying page 1…"_s), info(u"Page 1: 5 tracks (total 5)"_s),
                                  info(u"Querying page 2…"_s),
                                  error(u"Page 2 returned HTTP 404; keeping the 5 tracks read so far."_s),
                                  error(u"Found 5 tracks."_s), incomplete}));
    EXPECT_EQ(recordings().size(), 5);
    EXPECT_EQ(results.first().ending, Ending::incomplete);
    EXPECT_EQ(filesChanged.count(), 1);
}

TEST_F(LibraryExportTest, aPartialReadIsTheLastWordAlsoWithProblems)
{
    service.script(answering(404, u"page=2"_s, 1));
    service.script(answering(404, service.tracks().at(1).id + u".mp3"_s));
    runToTheEnd({Asset::audio});
    EXPECT_EQ(lines.last(), incomplete);
    EXPECT_EQ(results.first().problems, 1);
    EXPECT_EQ(recordings().size(), 4);
}

TEST_F(LibraryExportTest, problemsAreCountedAndHoldNothingBack)
{
    const QString first = service.tracks().at(1).id;
    const QString second = service.tracks().at(5).id;
    service.script(answering(404, first + u".mp3"_s));
    service.script(answering(403, second + u".mp3"_s));
    runToTheEnd({Asset::audio, Asset::lrc});
    ASSERT_EQ(lines.size(), 9);
    EXPECT_TRUE(lines.at(6).message.startsWith(u"MP3 failed for "));
    EXPECT_TRUE(lines.at(6).message.endsWith(u": HTTP 404"));
    EXPECT_EQ(lines.at(6).level, LogLevel::error);
    EXPECT_TRUE(lines.at(7).message.endsWith(u": HTTP 403"));
    EXPECT_EQ(lines.at(8), error(u"Finished with 2 problem(s); see above."_s));
    EXPECT_EQ(recordings().size(), 5);
    EXPECT_EQ(QDir(folder()).entryList({u"*.lrc"_s}).size(), 7);
    EXPECT_EQ(results.first().ending, Ending::withProblems);
    EXPECT_EQ(results.first().problems, 2);
}

TEST_F(LibraryExportTest, aStopBeforeTheFirstTrackGivesTheStoppedLineAndNoFile)
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

TEST_F(LibraryExportTest, aStopInTheMiddleKeepsWhatIsSaved)
{
    onStep = [this](const ExportProgress& progress) {
        if (progress.done == 3)
            exporter->toggle({});
    };
    runToTheEnd({Asset::audio, Asset::lrc});
    EXPECT_EQ(lines, readingOfSeven() << stopping << stopped);
    EXPECT_EQ(recordings().size(), 3);
    EXPECT_EQ(files().size(), 6);
    EXPECT_EQ(steps.size(), 4);
}

TEST_F(LibraryExportTest, aStoppedRunIsFinishedByTheNext)
{
    onStep = [this](const ExportProgress& progress) {
        if (progress.done == 3)
            exporter->toggle({});
    };
    runToTheEnd({Asset::audio});
    onStep = nullptr;
    lines.clear();
    service.clearRequests();
    runToTheEnd({Asset::audio});
    EXPECT_EQ(lines.last(), success(u"Done — 7 tracks saved."_s));
    EXPECT_EQ(assetRequests().size(), 4);
    EXPECT_EQ(recordings().size(), 7);
}

TEST_F(LibraryExportTest, aStopWhileTheFirstPageIsAwaitedGivesTheStoppedLine)
{
    service.script(silent(u"page=1"_s));
    stopAtLine(u"Querying page 1…"_s);
    runToTheEnd();
    EXPECT_EQ(lines, (QList<Line>{info(u"Querying page 1…"_s), stopping, error(u"Found 0 tracks."_s), stopped}));
    EXPECT_TRUE(results.first().wasStopped);
}

TEST_F(LibraryExportTest, aStopWhileALaterPageIsAwaitedIsAStopAndNoIncompleteLibrary)
{
    service.script(silent(u"page=2"_s));
    stopAtLine(u"Querying page 2…"_s);
    runToTheEnd();
    EXPECT_EQ(lines.last(), stopped);
    EXPECT_THAT(lines, testing::Contains(error(u"Found 5 tracks."_s)));
    EXPECT_EQ(files(), QStringList());
}

TEST_F(LibraryExportTest, everyPressOfStopIsAnswered)
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

TEST_F(LibraryExportTest, aProjectIsReadByItsIdentifier)
{
    service.clearRequests();
    runToTheEnd({Asset::lrc}, u"abc"_s);
    ASSERT_FALSE(service.requests().isEmpty());
    EXPECT_TRUE(service.requests().first().target.contains("project_id=abc"));
}

TEST_F(LibraryExportTest, theTokenOfTheMomentIsSentAndNotTheOneOfTheStart)
{
    const QString rotated = service.currentToken() + u"later"_s;
    service.setTokenRequired(false);
    onLine = [&](const Line& line) {
        if (line.message == u"Querying page 1…")
            session.setToken(rotated);
    };
    service.clearRequests();
    runToTheEnd({Asset::audio});
    const QList<demo::SeenRequest> seen = service.requests();
    ASSERT_GE(seen.size(), 3);
    EXPECT_EQ(seen.last().authorization, "Bearer " + rotated.toUtf8());
}

TEST_F(LibraryExportTest, aDestinationThatMovesMeanwhileIsForTheNextRun)
{
    onLine = [&](const Line& line) {
        if (line.message == u"Found 7 tracks.")
            session.setDestination(QUrl::fromLocalFile(home.filePath(u"Elsewhere"_s)));
    };
    runToTheEnd({Asset::audio});
    EXPECT_EQ(recordings().size(), 7);
    EXPECT_FALSE(QFile::exists(home.filePath(u"Elsewhere"_s)));
}

TEST_F(LibraryExportTest, theTimeLeftIsToldFromTheFourthTrackOn)
{
    onStep = [this](const ExportProgress&) { clock.pass(2s); };
    runToTheEnd({Asset::lrc});
    ASSERT_EQ(steps.size(), 8);
    EXPECT_EQ(steps.at(2).timeLeft, std::nullopt);
    EXPECT_EQ(steps.at(3).timeLeft, 8s);
    EXPECT_EQ(steps.at(6).timeLeft, 2s);
}

TEST_F(LibraryExportTest, destroyingItEndsARunThatWaitsForTheNetwork)
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

class EmptyLibraryExportTest : public LibraryExportTest
{
protected:
    EmptyLibraryExportTest()
        : LibraryExportTest(0)
    {
    }
};

TEST_F(EmptyLibraryExportTest, aWholeReadWithoutATrackIsAnEmptyWorkspace)
{
    runToTheEnd();
    EXPECT_EQ(lines, (QList<Line>{info(u"Querying page 1…"_s), success(u"Found 0 tracks."_s),
                                  error(u"That workspace has no tracks."_s)}));
    EXPECT_EQ(results.first().ending, Ending::noTracks);
}

TEST_F(EmptyLibraryExportTest, nothingTickedIsToldOfFirst)
{
    runToTheEnd({});
    EXPECT_EQ(lines, (QList<Line>{info(u"Querying page 1…"_s), success(u"Found 0 tracks."_s), nothingTicked}));
}

} // namespace
} // namespace orvane::test
