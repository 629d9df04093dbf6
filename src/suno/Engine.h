#pragma once

#include "main/App/Endpoints.h"
#include "platform/network/HttpClient.h"
#include "suno/Clip.h"
#include "suno/DownloadOutcome.h"
#include "suno/LogLevel.h"
#include "suno/Workspace.h"

#include <QList>
#include <QString>
#include <qcoro/qcorotask.h>

#include <chrono>
#include <functional>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <stop_token>

namespace orvane {

class Clock;

/// A read of the library that brought nothing: the sentence to show, and the HTTP status behind it or 0.
class LibraryError : public std::runtime_error
{
public:
    LibraryError(int code, const QString& sentence);

    int code() const { return code_; }

    const QString& sentence() const { return sentence_; }

private:
    int code_;
    QString sentence_;
};

/// Reads the user's library and saves the assets of its tracks.
///
/// One engine serves one tab. Its coroutines run on the main thread's event loop and one at a time; the network and the
/// parsing of pages do not. `stop()` may be called from any thread: every wait and transfer ends within 150 ms of it.
/// The caller clears the flag with `reset()` before a run. The client and the clock outlive the engine.
class Engine
{
public:
    static constexpr int maxPages = 2000;

    Engine(HttpClient& client, Clock& clock, Endpoints endpoints);

    /// Pause between two pages, in milliseconds; none below 1.
    int pagePauseMs = 250;
    /// Tries for one page; 0 or less counts as 1.
    int maxPageAttempts = 4;
    /// Longest silence of a server.
    std::chrono::milliseconds requestTimeout{60'000};
    /// Hears every line of the log.
    std::function<void(const QString& message, LogLevel level)> onLog;
    /// Gives the token of this moment; asked once for each request.
    std::function<QString()> tokenProvider;
    /// For the caller's bar: position, count and what is at hand.
    std::function<void(int, int, const QString&)> onProgress;

    void stop();
    void reset();
    bool isStopping() const;

    /// Whether the last `fetchAllClips` that returned read the whole library.
    bool lastFetchComplete() const { return lastFetchComplete_; }

    /// Gives `request` the credential, for those of its hops that may have it by their host and over an encrypted
    /// connection: the provider's, else `token`.
    void authorize(HttpRequest& request, const QString& token) const;

    /// The user's projects from the first address that lists any; empty where none does. Never throws.
    QCoro::Task<QList<Workspace>> fetchWorkspaces(QString token);

    /// The library, or the project `workspaceID` where that is not empty, without a record twice. What was read before
    /// a failure is kept: `lastFetchComplete` then is false. Throws LibraryError where there is nothing to keep, and
    /// where a page is no JSON.
    QCoro::Task<QList<Clip>> fetchAllClips(QString workspaceID, QString token);

    /// Saves the file at the address `from` under the path `to`, unless one with at least a byte is there.
    QCoro::Task<DownloadOutcome> downloadFile(QString from, QString to, QString token, int maxAttempts = 3);

    /// Milliseconds to wait before the next try, or absent where there shall be none. `response` is absent after a
    /// transport error. `attempt` counts from 0.
    static std::optional<std::chrono::milliseconds> retryDelay(int attempt, const HttpResponse* response);

    /// Waits in slices of at most 150 ms and gives up at a stop; the pause of every wait in a run.
    QCoro::Task<> stoppableWait(std::chrono::milliseconds duration);

    /// Address of a clip's audio: its own, else the one on the CDN.
    QString audioAddress(const Clip& clip) const;

private:
    struct Page
    {
        /// Absent when the stop flag was seen.
        std::optional<HttpResponse> response = {};
    };

    struct Attempt;

    HttpRequest requestFor(const QUrl& url, const QString& token) const;
    QUrl pageAddress(const QString& workspaceID, int page) const;
    QCoro::Task<Page> fetchPage(HttpRequest request, int page);
    QCoro::Task<std::optional<QByteArray>> pageBody(HttpRequest request, int page, qsizetype kept);
    void reportRefusal(int status, int page, qsizetype kept) const;
    QCoro::Task<QByteArray> bodyOrNothing(HttpRequest request, std::stop_token stop);
    QCoro::Task<Attempt> attemptDownload(HttpRequest request, QString to, int attempt);
    std::stop_token stopToken() const;
    std::stop_token listingToken() const;
    void log(const QString& message, LogLevel level) const;

    HttpClient& client_;
    Clock& clock_;
    Endpoints endpoints_;
    mutable std::mutex lock_;
    bool stopping_ = false;
    std::stop_source stop_;
    /// Ends the reading of a project list. A stop ends the one under way and bars no later one.
    std::stop_source listingStop_;
    bool lastFetchComplete_ = true;
};

} // namespace orvane
