#include "tests/suno/LibraryExportFixture.h"

#include <QSignalSpy>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using demo::Fault;
using Ending = ExportResult::Ending;

class ExportRead : public LibraryExportFixture
{
};

TEST_F(ExportRead, aRejectedSessionOnTheFirstPageIsSaidInItsOwnWords)
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

TEST_F(ExportRead, anotherRunCanStartAfterARejectedSession)
{
    session.setToken(u"worthless"_s);
    runToTheEnd();
    session.setToken(service.currentToken());
    lines.clear();
    runToTheEnd();
    EXPECT_EQ(lines.last(), success(u"Done — 7 tracks saved."_s));
}

TEST_F(ExportRead, aPageThatIsNoJsonEndsItWithTheErrorsOwnSentence)
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

TEST_F(ExportRead, aServerThatGivesNoPageAtAllIsToldApartFromAnEmptyLibrary)
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

TEST_F(ExportRead, aPartialReadIsRedAndItsTracksAreSavedAllTheSame)
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

TEST_F(ExportRead, aPartialReadIsTheLastWordAlsoWithProblems)
{
    service.script(answering(404, u"page=2"_s, 1));
    service.script(answering(404, service.tracks().at(1).id + u".mp3"_s));
    runToTheEnd({Asset::audio});
    EXPECT_EQ(lines.last(), incomplete);
    EXPECT_EQ(results.first().problems, 1);
    EXPECT_EQ(recordings().size(), 4);
}

class ExportOfNothing : public LibraryExportFixture
{
protected:
    ExportOfNothing()
        : LibraryExportFixture(0)
    {
    }
};

TEST_F(ExportOfNothing, aWholeReadWithoutATrackIsAnEmptyWorkspace)
{
    runToTheEnd();
    EXPECT_EQ(lines, (QList<Line>{info(u"Querying page 1…"_s), success(u"Found 0 tracks."_s),
                                  error(u"That workspace has no tracks."_s)}));
    EXPECT_EQ(results.first().ending, Ending::noTracks);
}

TEST_F(ExportOfNothing, nothingTickedIsToldOfFirst)
{
    runToTheEnd({});
    EXPECT_EQ(lines, (QList<Line>{info(u"Querying page 1…"_s), success(u"Found 0 tracks."_s), nothingTicked}));
}

} // namespace
} // namespace orvane::test
