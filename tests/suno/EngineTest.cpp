#include "tests/suno/EngineTest.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

Endpoints endpointsAt(const ScriptedServer& server)
{
    return {
        .sunoHome = server.url(),
        .sunoSiteDomain = u"127.0.0.1"_s,
        .feed = server.url(u"/api/feed/v2"_s),
        .workspaceLists = {server.url(u"/api/project/me"_s), server.url(u"/api/project/"_s),
                           server.url(u"/api/projects"_s)},
        .cdn = server.url(QString()),
        .credentialDomains = {{.domain = u"127.0.0.1"_s, .itself = true, .subdomains = false, .unencrypted = true}},
        .productSite = {},
        .productDomain = {},
    };
}

} // namespace

std::vector<std::chrono::milliseconds> slices(const std::vector<std::chrono::milliseconds>& waits)
{
    std::vector<std::chrono::milliseconds> cut;
    for (std::chrono::milliseconds wait : waits)
        for (; wait > 0ms; wait -= std::min(wait, 150ms))
            cut.push_back(std::min(wait, 150ms));
    return cut;
}

Script json(const QByteArray& body)
{
    return {send(answer("200 OK", "Content-Type: application/json\r\n", body))};
}

Script feedPage(const QStringList& ids)
{
    QJsonArray clips;
    for (const QString& id : ids)
        clips.append(QJsonObject{{u"id"_s, id}, {u"title"_s, u"Title "_s + id}});
    return json(QJsonDocument(QJsonObject{{u"clips"_s, clips}}).toJson(QJsonDocument::Compact));
}

Script status(int code, const QByteArray& headerLines)
{
    return {send(answer(QByteArray::number(code) + " Refused", headerLines, "no"))};
}

Script broken()
{
    return {reset()};
}

std::optional<QByteArray> headerIn(const QByteArray& head, const QByteArray& name)
{
    for (const QByteArray& line : head.split('\n')) {
        const qsizetype colon = line.indexOf(':');
        if (colon > 0 && line.first(colon).compare(name, Qt::CaseInsensitive) == 0)
            return line.sliced(colon + 1).trimmed();
    }
    return std::nullopt;
}

QByteArray targetOf(const QByteArray& head)
{
    return head.split(' ').value(1);
}

EngineTest::EngineTest(HttpClient::Limits limits)
    : client(limits)
    , engine(client, clock, endpointsAt(server))
{
    engine.pagePauseMs = 0;
    engine.onLog = [this](const QString& message, LogLevel level) {
        log.push_back({.message = message, .level = level});
    };
}

ReadOutcome EngineTest::read(const QString& workspaceID, const QString& token)
{
    return QCoro::waitFor(outcomeOf(engine.fetchAllClips(workspaceID, token)));
}

QStringList EngineTest::fetch(const QString& workspaceID, const QString& token)
{
    const ReadOutcome outcome = read(workspaceID, token);
    if (outcome.error)
        ADD_FAILURE() << "thrown: " << outcome.error->what();
    QStringList ids;
    std::transform(outcome.clips.begin(), outcome.clips.end(), std::back_inserter(ids),
                   [](const Clip& clip) { return clip.id; });
    return ids;
}

std::optional<LibraryError> EngineTest::fetchError(const QString& token)
{
    return read({}, token).error;
}

DownloadOutcome EngineTest::download(int maxAttempts)
{
    return download(server.url(u"/song.mp3"_s).toString(), target(), maxAttempts);
}

DownloadOutcome EngineTest::download(const QString& from, const QString& to, int maxAttempts)
{
    return QCoro::waitFor(engine.downloadFile(from, to, u"token"_s, maxAttempts));
}

QByteArray EngineTest::contents(const QString& path) const
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList EngineTest::namesInFolder() const
{
    return QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

std::vector<LogLine> EngineTest::remarks() const
{
    std::vector<LogLine> kept;
    std::copy_if(log.begin(), log.end(), std::back_inserter(kept), [](const LogLine& line) {
        return !line.message.startsWith(u"Querying page") && !line.message.contains(u"tracks (total");
    });
    return kept;
}

} // namespace orvane::test
