#include "main/App/L10n.h"
#include "platform/async/FreedOnPool.h"
#include "platform/network/Redaction.h"
#include "suno/Engine.h"
#include "suno/FeedPage.h"
#include "suno/WaitText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>
#include <QUrlQuery>
#include <QtConcurrentRun>
#include <qcoro/qcorofuture.h>

#include <algorithm>
#include <utility>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int ok = 200;
constexpr int unauthorized = 401;
constexpr int forbidden = 403;
constexpr int tooManyRequests = 429;

QList<Workspace> readWorkspaces(const QByteArray& body)
{
    const QJsonDocument document = QJsonDocument::fromJson(body);
    const QJsonValue json = document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
    return workspaces(json, 0);
}

/// What has been read so far, without a record twice.
class Harvest
{
public:
    /// Takes the clips out of the page.
    void add(FeedPage& page)
    {
        for (Clip& clip : page.clips) {
            if (seen_.contains(clip.id))
                continue;
            seen_.insert(clip.id);
            clips_.append(std::move(clip));
        }
        page.clips.clear();
    }

    QList<Clip> take() { return std::exchange(clips_, {}); }

    qsizetype size() const { return clips_.size(); }

private:
    QList<Clip> clips_;
    QSet<QString> seen_;
};

/// Reads a page into the harvest, which nobody else looks at meanwhile. Not for the main thread: with tens of thousands
/// of clips in it, a list or a set that grows would hold up a frame.
FeedPage harvestPage(const QByteArray& body, Harvest* harvest)
{
    FeedPage page = readFeedPage(body);
    harvest->add(page);
    return page;
}

} // namespace

QCoro::Task<QByteArray> Engine::bodyOrNothing(HttpRequest request, std::stop_token stop)
{
    HttpResponse response;
    try {
        response = co_await client_.data(request, stop);
    } catch (const HttpError&) {
        response.status = 0;
    }
    if (response.status != ok)
        response.body.clear();
    co_return response.body;
}

QCoro::Task<QList<Workspace>> Engine::fetchWorkspaces(QString token)
{
    const std::stop_token stop = listingToken();
    for (const QUrl& address : std::as_const(endpoints_.workspaceLists)) {
        const HttpRequest request = requestFor(address, token);
        const QByteArray body = co_await bodyOrNothing(request, stop);
        auto reading = QtConcurrent::run(readWorkspaces, body);
        const QList<Workspace> found = co_await reading;
        if (found.isEmpty())
            continue;
        log(L10n::t(L10n::Key::log25, {QString::number(found.size())}), LogLevel::info);
        co_return found;
    }
    co_return QList<Workspace>();
}

QUrl Engine::pageAddress(const QString& workspaceID, int page) const
{
    QUrlQuery query(endpoints_.feed);
    query.addQueryItem(u"page"_s, QString::number(page));
    if (!workspaceID.isEmpty())
        query.addQueryItem(u"project_id"_s, QString::fromLatin1(QUrl::toPercentEncoding(workspaceID)));
    QUrl address = endpoints_.feed;
    address.setQuery(query);
    return address;
}

QCoro::Task<QList<Clip>> Engine::fetchAllClips(QString workspaceID, QString token)
{
    lastFetchComplete_ = true;
    FreedOnPool<Harvest> harvest{Harvest()};
    for (int page = 1; page <= maxPages && !isStopping(); ++page) {
        const HttpRequest request = requestFor(pageAddress(workspaceID, page), token);
        log(L10n::t(L10n::Key::log28, {QString::number(page)}), LogLevel::info);
        const std::optional<QByteArray> body = co_await pageBody(request, page, harvest->size());
        if (!body)
            break;
        auto reading = QtConcurrent::run(harvestPage, *body, &*harvest);
        const FeedPage read = co_await reading;
        if (!read.error.isEmpty())
            throw LibraryError(0, u"Page %1 is not readable: %2"_s.arg(page).arg(read.error));
        if (read.records == 0)
            co_return harvest->take();
        log(L10n::t(L10n::Key::log29,
                    {QString::number(page), QString::number(read.records), QString::number(harvest->size())}),
            LogLevel::info);
        const std::chrono::milliseconds pause(pagePauseMs);
        co_await stoppableWait(pause);
    }
    lastFetchComplete_ = false;
    co_return harvest->take();
}

/// The body of a page that was answered with 200; absent where the read ends with the `kept` tracks it has.
QCoro::Task<std::optional<QByteArray>> Engine::pageBody(HttpRequest request, int page, qsizetype kept)
{
    Page fetched;
    std::optional<QString> failure;
    try {
        fetched = co_await fetchPage(request, page);
    } catch (const HttpError& error) {
        failure = redacted(error.sentence());
    }
    if (failure && kept == 0)
        throw LibraryError(0, *failure);
    if (failure)
        log(L10n::t(L10n::Key::log20, {QString::number(page), *failure, QString::number(kept)}), LogLevel::error);
    if (!fetched.response)
        co_return std::nullopt;
    if (fetched.response->status == ok)
        co_return fetched.response->body;
    reportRefusal(fetched.response->status, page, kept);
    co_return std::nullopt;
}

/// Throws where the session was rejected before anything was read.
void Engine::reportRefusal(int status, int page, qsizetype kept) const
{
    const bool rejected = status == unauthorized || status == forbidden;
    if (rejected && kept == 0)
        throw LibraryError(status,
                           u"Suno rejected the session (HTTP %1). Open the Suno tab and sign in again."_s.arg(status));
    if (rejected) {
        log(L10n::t(L10n::Key::log21, {QString::number(page), QString::number(status), QString::number(kept)}),
            LogLevel::error);
        return;
    }
    const QString reason =
        status == tooManyRequests
            ? u"Suno is still rate-limiting page %1 after %2 attempts"_s.arg(page).arg(maxPageAttempts)
            : u"Page %1 returned HTTP %2"_s.arg(page).arg(status);
    log(L10n::t(L10n::Key::log22, {reason, QString::number(kept)}), LogLevel::error);
}

QCoro::Task<Engine::Page> Engine::fetchPage(HttpRequest request, int page)
{
    const int lastAttempt = std::max(maxPageAttempts, 1) - 1;
    for (int attempt = 0; !isStopping(); ++attempt) {
        HttpResponse response;
        std::optional<HttpError> error;
        try {
            response = co_await client_.data(request, stopToken());
        } catch (const HttpError& thrown) {
            error = thrown;
        }
        const auto delay = retryDelay(attempt, error ? nullptr : &response);
        const bool failed = error || delay;
        if (failed && (isStopping() || (error && error->code() == HttpError::Code::Cancelled)))
            break;
        const bool isLast = attempt >= lastAttempt;
        if (error && isLast)
            throw HttpError(*error);
        if (!delay || isLast)
            co_return Page{.response = response};
        const QString what = error ? redacted(error->sentence()) : QString::number(response.status);
        log(L10n::t(error ? L10n::Key::log27 : L10n::Key::log26, {QString::number(page), what, wholeSeconds(*delay)}),
            LogLevel::info);
        co_await stoppableWait(*delay);
    }
    co_return Page();
}

} // namespace orvane
