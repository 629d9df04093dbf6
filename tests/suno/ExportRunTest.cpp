#include "tests/suno/LibraryExportFixture.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using Ending = ExportResult::Ending;

class ExportRun : public LibraryExportFixture
{
};

TEST_F(ExportRun, aWholeRunSavesEverythingAndSaysSo)
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

TEST_F(ExportRun, theFilesHoldWhatTheServiceServed)
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

TEST_F(ExportRun, everyTrackIsAnnouncedInTheOrderOfTheLibraryAndThenTheEnd)
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

TEST_F(ExportRun, theSessionIsBusyFromTheStartToTheEnd)
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

TEST_F(ExportRun, problemsAreCountedAndHoldNothingBack)
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

TEST_F(ExportRun, aProjectIsReadByItsIdentifier)
{
    service.clearRequests();
    runToTheEnd({Asset::lrc}, u"abc"_s);
    ASSERT_FALSE(service.requests().isEmpty());
    EXPECT_TRUE(service.requests().first().target.contains("project_id=abc"));
}

TEST_F(ExportRun, theTokenOfTheMomentIsSentAndNotTheOneOfTheStart)
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

TEST_F(ExportRun, aDestinationThatMovesMeanwhileIsForTheNextRun)
{
    onLine = [&](const Line& line) {
        if (line.message == u"Found 7 tracks.")
            session.setDestination(QUrl::fromLocalFile(home.filePath(u"Elsewhere"_s)));
    };
    runToTheEnd({Asset::audio});
    EXPECT_EQ(recordings().size(), 7);
    EXPECT_FALSE(QFile::exists(home.filePath(u"Elsewhere"_s)));
}

TEST_F(ExportRun, theTimeLeftIsToldFromTheFourthTrackOn)
{
    onStep = [this](const ExportProgress&) { clock.pass(2s); };
    runToTheEnd({Asset::lrc});
    ASSERT_EQ(steps.size(), 8);
    EXPECT_EQ(steps.at(2).timeLeft, std::nullopt);
    EXPECT_EQ(steps.at(3).timeLeft, 8s);
    EXPECT_EQ(steps.at(6).timeLeft, 2s);
}

} // namespace
} // namespace orvane::test
