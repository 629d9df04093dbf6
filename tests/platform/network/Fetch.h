#pragma once

#include "platform/network/HttpClient.h"

#include <QUrl>
#include <qcoro/qcorotask.h>

#include <optional>
#include <ostream>
#include <stop_token>

namespace orvane {

inline void PrintTo(HttpError::Code code, std::ostream* out)
{
    constexpr const char* names[] = {"Transport",       "TimedOut",         "Stalled", "Cancelled", "TooLarge",
                                     "RefusedRedirect", "TooManyRedirects", "Storage", "Unknown"};
    *out << names[static_cast<int>(code)];
}

} // namespace orvane

namespace orvane::test {

/// How a request ended: with an answer or with an error.
struct Outcome
{
    HttpResponse response;
    std::optional<HttpError> error;

    /// Absent where there was an answer.
    std::optional<HttpError::Code> code() const { return error ? std::optional(error->code()) : std::nullopt; }

    QString sentence() const { return error ? error->sentence() : QString(); }
};

/// Turns the error into a value, so that a test can look at it.
inline QCoro::Task<Outcome> outcomeOf(QCoro::Task<HttpResponse> task)
{
    Outcome outcome;
    try {
        outcome.response = co_await task;
    } catch (const HttpError& error) {
        outcome.error = error;
    }
    co_return outcome;
}

inline HttpRequest requestFor(const QUrl& url)
{
    HttpRequest request;
    request.url = url;
    return request;
}

inline Outcome fetch(HttpClient& client, HttpRequest request, std::stop_token stop = {})
{
    return QCoro::waitFor(outcomeOf(client.data(std::move(request), stop)));
}

inline Outcome fetch(HttpClient& client, const QUrl& url)
{
    return fetch(client, requestFor(url));
}

inline Outcome download(HttpClient& client, HttpRequest request, const QString& path, std::stop_token stop = {})
{
    return QCoro::waitFor(outcomeOf(client.download(std::move(request), path, stop)));
}

} // namespace orvane::test
