#include "demonstration/service/StandInService.h"
#include "suno/SaveClip.h"
#include "suno/TrackNames.h"
#include "tests/suno/ReadOutcome.h"
#include "tests/support/TestClock.h"
#include "tests/support/TestFolder.h"
#include "trackfiles/keys/TrackKeys.h"

#include <QSet>
#include <QUrl>

#include <algorithm>
#include <gmock/gmock.h>

/// The engine before the whole stand-in service: its tokens, its library with the telling tracks, and its faults.

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using demo::Fault;
using demo::StandInService;

constexpr int trackCount = 16;
constexpr int pageSize = 6;
const AssetSet everything{Asset::audio, Asset::lyrics, Asset::lrc, Asset::artwork};

class StandIn : public testing::Test
{
protected:
    explicit StandIn(HttpClient::Limits limits = HttpClient::Limits())
        : client(limits)
    {
        engine.pagePauseMs = 0;
        engine.tokenProvider = [this] { return service.currentToken(); };
        engine.onLog = [this](const QString& message, LogLevel level) {
            messages.append(message);
            errors += level == LogLevel::error ? 1 : 0;
        };
    }

    ReadOutcome read(const QString& workspaceID = {})
    {
        return QCoro::waitFor(outcomeOf(engine.fetchAllClips(workspaceID, {})));
    }

    QStringList allIds() const
    {
        QStringList ids;
        for (const demo::Track& track : service.tracks())
            ids.append(track.id);
        return ids;
    }

    /// Saves these clips as a run does; returns the bases.
    QStringList saveAll(const QList<Clip>& clips, const AssetSet& assets = everything)
    {
        QStringList bases;
        const auto existing = ExistingFiles::byTitle(folder.path());
        for (int index = 0; index < clips.size(); ++index) {
            const ClipNames names = clipNames(clips[index], index, existing);
            const ClipResult result = QCoro::waitFor(
                saveClip(engine, clips[index], {assets, folder.path(), {}}, names.base, names.safeTitle));
            EXPECT_EQ(result, ClipResult()) << qPrintable(names.base);
            bases.append(names.base);
        }
        return bases;
    }

    /// Requests for recordings.
    qsizetype audioRequests() const
    {
        const QList<demo::SeenRequest> seen = service.requests();
        return std::count_if(seen.begin(), seen.end(),
                             [](const demo::SeenRequest& request) { return request.target.contains(".mp3"); });
    }

    StandInService service{{.tracks = trackCount, .pageSize = pageSize, .shortestSeconds = 1, .longestSeconds = 2}};
    HttpClient client;
    TestClock clock;
    Engine engine{client, clock, service.endpoints()};
    TestFolder folder;
    QStringList messages;
    int errors = 0;
};

QStringList idsOf(const QList<Clip>& clips)
{
    QStringList ids;
    for (const Clip& clip : clips)
        ids.append(clip.id);
    return ids;
}

TEST_F(StandIn, theWholeLibraryIsReadInTheOrderOfTheFeed)
{
    const ReadOutcome outcome = read();
    EXPECT_FALSE(outcome.error);
    EXPECT_EQ(idsOf(outcome.clips), allIds());
    EXPECT_TRUE(engine.lastFetchComplete());
}

TEST_F(StandIn, whatIsSavedAreTheServersOwnBytes)
{
    const QList<Clip> clips = read().clips.first(2);
    const QStringList bases = saveAll(clips);
    for (int index = 0; index < clips.size(); ++index) {
        EXPECT_EQ(folder.read(bases[index] + u".mp3"_s), service.audioOf(clips[index].id)) << qPrintable(bases[index]);
        const QString cover = bases[index] + u'.' + artworkExtension(*clips[index].imageURL);
        EXPECT_EQ(folder.read(cover), service.artworkOf(clips[index].id)) << qPrintable(cover);
    }
}

TEST_F(StandIn, aSecondRunOverTheWholeLibraryAsksForNoRecording)
{
    service.setLibrary({.tracks = trackCount, .pageSize = pageSize, .assetBytes = 20'000});
    const AssetSet withoutCover{Asset::audio, Asset::lyrics, Asset::lrc};
    const QList<Clip> clips = read().clips;
    saveAll(clips, withoutCover);
    EXPECT_EQ(audioRequests(), trackCount);
    const QStringList names = folder.names();
    service.clearRequests();
    saveAll(clips, withoutCover);
    EXPECT_EQ(audioRequests(), 0);
    EXPECT_EQ(folder.names(), names);
    EXPECT_EQ(errors, 0);
}

TEST_F(StandIn, aTokenThatRotatesDuringTheReadIsTakenUpAtTheNextPage)
{
    engine.onLog = [this](const QString& message, LogLevel) {
        if (message.startsWith(u"Page "))
            service.expireTokens();
    };
    EXPECT_EQ(idsOf(read().clips), allIds());
    EXPECT_TRUE(engine.lastFetchComplete());
}

TEST_F(StandIn, aTokenThatRunsOutIsSaidWithWhatWasKept)
{
    const QString token = service.currentToken();
    engine.tokenProvider = [token] { return token; };
    const auto listen = engine.onLog;
    engine.onLog = [this, listen](const QString& message, LogLevel level) {
        listen(message, level);
        if (message.startsWith(u"Page 1"))
            service.expireTokens();
    };
    EXPECT_EQ(read().clips.size(), pageSize);
    EXPECT_FALSE(engine.lastFetchComplete());
    EXPECT_EQ(messages.last(), u"Suno rejected the session at page 2 (HTTP 401); keeping the 6 tracks read so far."_s);
}

TEST_F(StandIn, tracksMadeDuringTheReadShiftTheFeedAndNoneIsTwiceOrLost)
{
    const QStringList before = allIds();
    engine.onLog = [this](const QString& message, LogLevel) {
        if (message.startsWith(u"Page 1"))
            service.addTracks(2);
    };
    const QStringList ids = idsOf(read().clips);
    EXPECT_EQ(ids, before);
    EXPECT_EQ(QSet<QString>(ids.begin(), ids.end()).size(), ids.size());
}

TEST_F(StandIn, theProjectsAreFoundInEveryFormAndNarrowTheRead)
{
    using Form = demo::ProjectForm;
    for (const auto form : {Form::list, Form::wrappedInProjects, Form::wrappedInProject, Form::wrappedInData,
                            Form::wrappedInResults, Form::wrappedInItems, Form::nested, Form::single}) {
        SCOPED_TRACE(static_cast<int>(form));
        service.setLibrary({.tracks = trackCount, .pageSize = pageSize, .projectForm = form});
        const QList<Workspace> found = QCoro::waitFor(engine.fetchWorkspaces({}));
        ASSERT_FALSE(found.isEmpty());
        EXPECT_EQ(found.first().id, service.projectId(0));
        const ReadOutcome outcome = read(found.first().id);
        EXPECT_TRUE(engine.lastFetchComplete());
        EXPECT_GT(outcome.clips.size(), 0);
        EXPECT_LT(outcome.clips.size(), trackCount);
    }
}

TEST_F(StandIn, noCredentialReachesTheServerWithoutAToken)
{
    engine.tokenProvider = [] { return QString(); };
    const ReadOutcome outcome = read();
    ASSERT_TRUE(outcome.error);
    EXPECT_EQ(outcome.error->code(), 401);
    EXPECT_EQ(service.requests().first().authorization, QByteArray());
}

struct NamedFault
{
    std::string name;
    Fault::Kind kind = Fault::Kind::status;
};

void PrintTo(const NamedFault& fault, std::ostream* out)
{
    *out << fault.name;
}

/// Every fault of the service but the page that comes for ever, for good, at one place.
class StandInFault : public StandIn, public testing::WithParamInterface<NamedFault>
{
protected:
    StandInFault()
        : StandIn(limits())
        , token(service.currentToken())
    {
    }

    /// Short for the fault that consists in dribbling, and otherwise so long that it plays no part.
    static HttpClient::Limits limits()
    {
        const bool isSlow = GetParam().kind == Fault::Kind::dribble;
        return {.stallWindow = isSlow ? 300ms : 60'000ms, .stallBytes = 16, .memoryBody = 1024 * 1024};
    }

    void breakRequestsFor(const QString& where)
    {
        if (GetParam().kind == Fault::Kind::silence)
            engine.requestTimeout = 150ms;
        constexpr int everyRequest = 1000;
        service.script(
            {.kind = GetParam().kind, .where = where, .times = everyRequest, .location = "http://127.0.0.1:1/nobody"});
    }

    /// Complete with all tracks, or thrown with the page, or told with the page.
    void expectHonest(const ReadOutcome& outcome, const QString& page)
    {
        if (outcome.error) {
            EXPECT_FALSE(outcome.error->sentence().isEmpty());
        } else if (engine.lastFetchComplete()) {
            EXPECT_EQ(idsOf(outcome.clips), allIds());
        } else {
            EXPECT_TRUE(messages.last().contains(page)) << qPrintable(messages.last());
        }
        for (const QString& message : messages)
            EXPECT_FALSE(message.contains(token)) << qPrintable(message);
    }

    QString token;
};

TEST_P(StandInFault, onTheFirstPageIsNeverTakenForAnEmptyLibrary)
{
    breakRequestsFor(u"page=1"_s);
    expectHonest(read(), u"age 1"_s);
}

TEST_P(StandInFault, onALaterPageKeepsWhatWasRead)
{
    const auto listen = engine.onLog;
    engine.onLog = [this, listen](const QString& message, LogLevel level) {
        listen(message, level);
        if (message.startsWith(u"Page 1:"))
            breakRequestsFor(u"page=2"_s);
    };
    const ReadOutcome outcome = read();
    expectHonest(outcome, u"age 2"_s);
    EXPECT_TRUE(outcome.error || outcome.clips.size() >= pageSize);
    EXPECT_TRUE(!outcome.error || outcome.error->sentence().startsWith(u"Page 2 is not readable"_s));
}

TEST_P(StandInFault, onAnAssetLeavesTheServersBytesOrNothing)
{
    const QList<Clip> clips = read().clips;
    breakRequestsFor(u".mp3"_s);
    const ClipResult result =
        QCoro::waitFor(saveClip(engine, clips[0], {{Asset::audio}, folder.path(), {}}, u"001 - x"_s, u"x"_s));
    if (result.problems == 0) {
        const bool otherBody = GetParam().kind == Fault::Kind::html || GetParam().kind == Fault::Kind::badJson;
        EXPECT_EQ(folder.names(), QStringList{u"001 - x.mp3"_s});
        EXPECT_EQ(folder.read(u"001 - x.mp3"_s) == service.audioOf(clips[0].id), !otherBody);
    } else {
        EXPECT_EQ(folder.names(), QStringList());
        EXPECT_TRUE(messages.last().startsWith(u"MP3 failed for x: "_s)) << qPrintable(messages.last());
    }
}

INSTANTIATE_TEST_SUITE_P(
    Service, StandInFault,
    testing::Values(
        NamedFault{"status", Fault::Kind::status}, NamedFault{"resetInBody", Fault::Kind::resetInBody},
        NamedFault{"closeBeforeAnswer", Fault::Kind::closeBeforeAnswer}, NamedFault{"silence", Fault::Kind::silence},
        NamedFault{"dribble", Fault::Kind::dribble},
        NamedFault{"contentLengthTooLarge", Fault::Kind::contentLengthTooLarge},
        NamedFault{"contentLengthTooSmall", Fault::Kind::contentLengthTooSmall},
        NamedFault{"contentLengthNegative", Fault::Kind::contentLengthNegative},
        NamedFault{"contentLengthAbsurd", Fault::Kind::contentLengthAbsurd},
        NamedFault{"contentLengthTwice", Fault::Kind::contentLengthTwice}, NamedFault{"chunked", Fault::Kind::chunked},
        NamedFault{"chunkedCut", Fault::Kind::chunkedCut}, NamedFault{"chunkedBadSize", Fault::Kind::chunkedBadSize},
        NamedFault{"emptyBody", Fault::Kind::emptyBody}, NamedFault{"gzip", Fault::Kind::gzip},
        NamedFault{"gzipCut", Fault::Kind::gzipCut}, NamedFault{"gzipBadChecksum", Fault::Kind::gzipBadChecksum},
        NamedFault{"gzipBomb", Fault::Kind::gzipBomb}, NamedFault{"notHttp", Fault::Kind::notHttp},
        NamedFault{"redirect", Fault::Kind::redirect}, NamedFault{"redirectLoop", Fault::Kind::redirectLoop},
        NamedFault{"html", Fault::Kind::html}, NamedFault{"badJson", Fault::Kind::badJson}),
    [](const auto& fault) { return fault.param.name; });

} // namespace
} // namespace orvane::test
