#include "platform/network/Exchange.h"

#include "platform/network/HeaderFields.h"

#include <algorithm>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

using Code = HttpError::Code;

QByteArray hostField(const QUrl& url)
{
    const QByteArray host = url.host(QUrl::FullyEncoded).toLatin1();
    const QByteArray bracketed = host.contains(':') ? '[' + host + ']' : host;
    return url.port() < 0 ? bracketed : bracketed + ':' + QByteArray::number(url.port());
}

QByteArray target(const QUrl& url)
{
    const QByteArray path = url.path(QUrl::FullyEncoded).toLatin1();
    const QByteArray query = url.hasQuery() ? '?' + url.query(QUrl::FullyEncoded).toLatin1() : QByteArray();
    return (path.isEmpty() ? QByteArray("/") : path) + query;
}

void append(QByteArray& head, const HttpHeader& header)
{
    if (!isSendable(header))
        throw HttpError(Code::Transport, u"a header of the request is invalid"_s);
    head += header.name + ": " + header.value + "\r\n";
}

QString seconds(std::chrono::milliseconds duration)
{
    return QString::number(std::chrono::duration<double>(duration).count());
}

} // namespace

Exchange::Exchange(HttpRequest request, std::unique_ptr<Body> body, ExchangeGround ground)
    : request_(std::move(request))
    , body_(std::move(body))
    , ground_(std::move(ground))
    , hop_(request_.url)
    , idleTimer_(this)
    , paceTimer_(this)
{
    idleTimer_.setSingleShot(true);
    connect(&idleTimer_, &QTimer::timeout, this, [this] {
        fail(HttpError(Code::TimedOut, u"no answer for %1 s (%2)"_s.arg(seconds(request_.timeout), hop_.host())));
    });
    connect(&paceTimer_, &QTimer::timeout, this, &Exchange::checkPace);
    promise_.start();
}

Exchange::~Exchange()
{
    disconnect();
    cancel();
}

void Exchange::start()
{
    const bool web = hop_.scheme() == u"http" || hop_.scheme() == u"https";
    if (!web || hop_.host().isEmpty())
        fail(HttpError(Code::Transport, u"bad URL"_s));
    else
        beginHop();
}

void Exchange::cancel()
{
    fail(HttpError(Code::Cancelled, u"cancelled"_s));
}

void Exchange::beginHop()
{
    paceTimer_.stop();
    windowBytes_ = 0;
    restartIdleTimer();
    parser_ = std::make_unique<ResponseParser>();
    parser_->onHead = [this](const ResponseHead& head) { takeHead(head); };
    parser_->onBody = [this](QByteArrayView bytes) { takeBody(bytes); };
    headTaken_ = false;
    connection_ = ground_.pool.take(Origin::of(hop_));
    if (!connection_) {
        openConnection();
        return;
    }
    try {
        admit({connection_->address()});
    } catch (const HttpError& error) {
        fail(error);
        return;
    }
    listen();
    send();
}

void Exchange::openConnection()
{
    connection_.reset(new Connection(Origin::of(hop_)));
    connect(connection_.get(), &Connection::opened, this, &Exchange::send);
    listen();
    connection_->open([this](const QList<QHostAddress>& addresses) { admit(addresses); });
}

void Exchange::admit(const QList<QHostAddress>& addresses) const
{
    if (cameFromPublic_ && !std::all_of(addresses.begin(), addresses.end(), ground_.isPublicAddress))
        throw HttpError(Code::RefusedRedirect, u"refused a redirect into a private network (%1)"_s.arg(hop_.host()));
}

void Exchange::listen()
{
    connect(connection_.get(), &Connection::failed, this, &Exchange::fail);
    connect(connection_.get(), &Connection::arrived, this, &Exchange::receive);
    connect(connection_.get(), &Connection::closed, this, &Exchange::receiveEnd);
}

void Exchange::send()
{
    try {
        connection_->write(requestHead());
    } catch (const HttpError& error) {
        fail(error);
    }
}

QByteArray Exchange::requestHead() const
{
    QByteArray head = "GET " + target(hop_) + " HTTP/1.1\r\n";
    append(head, {.name = "Host", .value = hostField(hop_)});
    append(head, {.name = "Connection", .value = "keep-alive"});
    append(head, {.name = "Accept-Encoding", .value = body_->acceptedCoding()});
    for (const HttpHeader& header : request_.headers)
        append(head, header);
    if (!request_.credentialFor)
        return head + "\r\n";
    if (const std::optional<HttpHeader> credential = request_.credentialFor(hop_))
        append(head, *credential);
    return head + "\r\n";
}

void Exchange::receive()
{
    try {
        connection_->read([this](QByteArrayView bytes) {
            if (!paceTimer_.isActive())
                paceTimer_.start(ground_.limits.stallWindow);
            windowBytes_ += bytes.size();
            parser_->feed(bytes);
        });
        if (!settle())
            restartIdleTimer();
    } catch (const HttpError& error) {
        fail(error);
    }
}

/// What came before the end is read first: it may be more than one turn's worth.
void Exchange::receiveEnd()
{
    if (retriesOnFreshConnection())
        return;
    try {
        const Connection* const ending = connection_.get();
        bool more = true;
        while (more && !done_ && connection_.get() == ending) {
            more = false;
            connection_->read([this, &more](QByteArrayView bytes) {
                more = true;
                parser_->feed(bytes);
            });
        }
        if (done_)
            return;
        parser_->end();
        settle();
    } catch (const HttpError& error) {
        fail(error);
    }
}

/// A server may end an idle connection at the moment in which it is used again; a GET can then be sent once more.
bool Exchange::retriesOnFreshConnection()
{
    if (!connection_->isUsed() || !parser_->isUntouched())
        return false;
    beginHop();
    return true;
}

void Exchange::takeHead(const ResponseHead& head)
{
    head_ = head;
    headTaken_ = true;
    nextHop_.reset();
    if (isRedirect(head.status))
        nextHop_ = redirectTarget(hop_, head.header("Location").value_or(QByteArray()));
    bodyWanted_ = !nextHop_ && body_->begin(head);
}

void Exchange::takeBody(QByteArrayView bytes)
{
    if (bodyWanted_)
        body_->write(bytes);
}

/// Ends the hop if there is nothing more to wait for.
bool Exchange::settle()
{
    const bool unwanted = headTaken_ && !bodyWanted_;
    if (!parser_->isDone() && !unwanted)
        return false;
    if (nextHop_)
        followRedirect();
    else
        complete();
    return true;
}

void Exchange::followRedirect()
{
    if (++redirects_ > ground_.limits.redirects)
        throw HttpError(Code::TooManyRedirects, u"more than %1 redirects"_s.arg(ground_.limits.redirects));
    cameFromPublic_ = ground_.isPublicAddress(connection_->address());
    hop_ = *std::exchange(nextHop_, std::nullopt);
    connection_.reset();
    beginHop();
}

void Exchange::complete()
{
    HttpResponse response;
    response.status = head_.status;
    response.headers = head_.headers;
    body_->finish(response);
    if (parser_->isDone() && head_.keepAlive && connection_->isOpen())
        ground_.pool.give(std::move(connection_));
    done_ = true;
    promise_.addResult(std::move(response));
    finish();
}

void Exchange::fail(const HttpError& error)
{
    if (std::exchange(done_, true))
        return;
    body_->abandon();
    promise_.setException(std::make_exception_ptr(error));
    finish();
}

void Exchange::finish()
{
    idleTimer_.stop();
    paceTimer_.stop();
    connection_.reset();
    promise_.finish();
    Q_EMIT ended();
}

void Exchange::restartIdleTimer()
{
    idleTimer_.start(request_.timeout);
}

void Exchange::checkPace()
{
    if (std::exchange(windowBytes_, 0) < ground_.limits.stallBytes)
        fail(HttpError(Code::Stalled, u"the transfer stalled (%1)"_s.arg(hop_.host())));
}

} // namespace orvane
