#include "suno/Engine.h"

#include "platform/async/Clock.h"
#include "suno/Credential.h"

#include <algorithm>
#include <utility>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

LibraryError::LibraryError(int code, const QString& sentence)
    : std::runtime_error(sentence.toStdString())
    , code_(code)
    , sentence_(sentence)
{
}

Engine::Engine(HttpClient& client, Clock& clock, Endpoints endpoints)
    : client_(client)
    , clock_(clock)
    , endpoints_(std::move(endpoints))
{
}

// What is under way is told outside the lock: it may ask for the flag.
void Engine::stop()
{
    std::stop_source run;
    std::stop_source listing;
    {
        const std::scoped_lock guard(lock_);
        stopping_ = true;
        run = stop_;
        std::swap(listing, listingStop_);
    }
    run.request_stop();
    listing.request_stop();
}

void Engine::reset()
{
    const std::scoped_lock guard(lock_);
    stopping_ = false;
    stop_ = std::stop_source();
}

bool Engine::isStopping() const
{
    const std::scoped_lock guard(lock_);
    return stopping_;
}

std::stop_token Engine::stopToken() const
{
    const std::scoped_lock guard(lock_);
    return stop_.get_token();
}

std::stop_token Engine::listingToken() const
{
    const std::scoped_lock guard(lock_);
    return listingStop_.get_token();
}

void Engine::authorize(HttpRequest& request, const QString& token) const
{
    const auto header = credentialHeader(tokenProvider ? tokenProvider() : token);
    request.credentialFor = [header, domains = endpoints_.credentialDomains](const QUrl& hop) {
        return mayReceiveCredential(domains, hop) ? header : std::nullopt;
    };
}

HttpRequest Engine::requestFor(const QUrl& url, const QString& token) const
{
    HttpRequest request;
    request.url = url;
    request.headers = {
        HttpHeader{.name = "User-Agent",
                   .value = "Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) AppleWebKit/537.36 (KHTML, like Gecko)"}};
    request.timeout = requestTimeout;
    authorize(request, token);
    return request;
}

QCoro::Task<> Engine::stoppableWait(std::chrono::milliseconds duration)
{
    constexpr std::chrono::milliseconds longestSlice{150};
    while (duration.count() >= 1 && !isStopping()) {
        const std::chrono::milliseconds slice = std::min(duration, longestSlice);
        co_await clock_.sleep(slice);
        duration -= slice;
    }
}

QString Engine::audioAddress(const Clip& clip) const
{
    if (clip.audioURL)
        return *clip.audioURL;
    QUrl address = endpoints_.cdn;
    address.setPath(u'/' + QString::fromLatin1(QUrl::toPercentEncoding(clip.id)) + u".mp3"_s, QUrl::TolerantMode);
    return address.toString(QUrl::FullyEncoded);
}

void Engine::log(const QString& message, LogLevel level) const
{
    if (onLog)
        onLog(message, level);
}

} // namespace orvane
