#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUrl>
#include <qcoro/qcorotask.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <stop_token>

namespace orvane {

struct HttpHeader
{
    QByteArray name;
    QByteArray value;

    bool operator==(const HttpHeader&) const = default;
};

/// One GET. `headers` go to every hop; `credentialFor` is asked anew for each hop's address, on the network thread, and
/// must be pure.
struct HttpRequest
{
    QUrl url;
    QList<HttpHeader> headers;
    std::function<std::optional<HttpHeader>(const QUrl& hop)> credentialFor;
    std::chrono::milliseconds timeout{60'000};
};

/// The final answer, whatever its status. `body` is empty for a download.
struct HttpResponse
{
    int status = 0;
    QList<HttpHeader> headers;
    QByteArray body;
    /// Bytes that the server announced; a body that was taken has as many, for anything else is an error. Absent where
    /// it announced none, and where body is what a compressed answer unpacked to.
    std::optional<qint64> expectedContentLength;
    /// Bytes received: of the body in memory, or written to the file.
    qint64 size = 0;

    /// Value of the first header of that name, compared without case; absent if there is none.
    std::optional<QByteArray> header(QByteArrayView name) const;
};

/// A request that brought no answer. `sentence()` has been through `redacted`: it may be logged and shown.
class HttpError : public std::runtime_error
{
public:
    enum class Code
    {
        Transport,
        TimedOut,
        Stalled,
        Cancelled,
        TooLarge,
        RefusedRedirect,
        TooManyRedirects,
        Storage,
        Unknown,
    };

    HttpError(Code code, const QString& sentence);

    Code code() const { return code_; }

    const QString& sentence() const { return sentence_; }

private:
    Code code_;
    QString sentence_;
};

/// GET requests over HTTP and HTTPS on a thread of its own; nothing is kept on disk, no cookie is stored or sent by it.
///
/// Redirects are followed by hand, at most five, never from https to http, never to anything but http and https, and
/// never from a public address to a loopback or private one. An attempt ends in `TimedOut` when no byte comes for the
/// request's time-out and in `Stalled` when fewer than `Limits::stallBytes` came within `Limits::stallWindow`. A stop
/// requested on the token ends it in `Cancelled` within a few milliseconds. Calls are made from one thread and come
/// back on it. The client outlives its calls.
class HttpClient
{
public:
    struct Limits
    {
        std::chrono::milliseconds stallWindow{30'000};
        /// 1 KiB/s over the window.
        qint64 stallBytes = qint64{30} * 1024;
        /// Largest body taken into memory, bytes.
        qint64 memoryBody = qint64{64} * 1024 * 1024;
        int redirects = 5;
    };

    HttpClient();
    explicit HttpClient(Limits limits);
    ~HttpClient();
    HttpClient(const HttpClient&) = delete;
    HttpClient& operator=(const HttpClient&) = delete;

    /// Fetches into memory; throws HttpError.
    QCoro::Task<HttpResponse> data(HttpRequest request, std::stop_token stop);

    /// Streams the body of a 200 to `path`, asking for the identity encoding; throws HttpError. The file is whole as
    /// received (not yet flushed to the disk) after a 200, and does not exist after any other status or an error.
    QCoro::Task<HttpResponse> download(HttpRequest request, QString path, std::stop_token stop);

private:
    class Worker;
    class Thread;
    std::unique_ptr<Thread> thread_;
};

} // namespace orvane
