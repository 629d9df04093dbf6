#include "demonstration/service/Connection.h"

#include "demonstration/service/HttpServer.h"

#include <QFutureWatcher>
#include <QTcpSocket>
#include <QtConcurrentRun>

#include <sys/socket.h>

namespace orvane::demo {
namespace {

constexpr qint64 pieceBytes = 256 * 1024;

SeenRequest seen(const Request& request, int status)
{
    return {.method = request.method,
            .target = request.target,
            .host = request.header("Host"),
            .authorization = request.header("Authorization"),
            .cookie = request.header("Cookie"),
            .userAgent = request.header("User-Agent"),
            .acceptEncoding = request.header("Accept-Encoding"),
            .status = status};
}

} // namespace

Connection::Connection(QTcpSocket* socket, HttpServer& server, QObject* parent)
    : QObject(parent)
    , socket_(socket)
    , server_(server)
{
    socket_->setParent(this);
    socket_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    socket_->setReadBufferSize(largestRequest + 1);
    connect(socket_, &QTcpSocket::readyRead, this, &Connection::readRequests);
    connect(socket_, &QTcpSocket::bytesWritten, this, &Connection::sendMore);
    connect(socket_, &QTcpSocket::disconnected, this, &QObject::deleteLater);
    connect(&pace_, &QTimer::timeout, this, [this] {
        sendPiece(1);
        sendMore();
    });
}

void Connection::readRequests()
{
    while (!answering_) {
        buffer_ += socket_->readAll();
        bool isBad = false;
        const std::optional<Request> request = takeRequest(buffer_, isBad);
        if (isBad)
            return begin(wellAnswered({.headers = {{"Connection", "close"}}}, {.status = 400}));
        if (!request)
            return;
        answer(*request);
    }
}

void Connection::answer(const Request& request)
{
    answering_ = true;
    const std::optional<Fault> fault = server_.faults_.take(request.target);
    Request asked = request;
    if (fault && fault->kind == Fault::Kind::samePageForEver)
        asked.target = asked.target.split('?').first() + "?page=1";
    const Response response = server_.handler_(asked);
    if (response.made && (!fault || needsBody(fault->kind)))
        make(request, response, fault);
    else
        send(request, response, fault);
}

void Connection::make(const Request& request, const Response& response, const std::optional<Fault>& fault)
{
    auto* watcher = new QFutureWatcher<QByteArray>(this);
    connect(watcher, &QFutureWatcher<QByteArray>::finished, this, [this, watcher, request, response, fault] {
        Response made = response;
        made.body = watcher->result();
        watcher->deleteLater();
        send(request, made, fault);
    });
    watcher->setFuture(QtConcurrent::run(&server_.makers_, response.made));
}

void Connection::send(const Request& request, const Response& response, const std::optional<Fault>& fault)
{
    WireAnswer wire = fault ? badlyAnswered(request, response, *fault) : wellAnswered(request, response);
    server_.record(seen(request, wire.status));
    begin(std::move(wire));
}

void Connection::begin(WireAnswer answer)
{
    answering_ = true;
    answer_ = std::move(answer);
    sent_ = 0;
    socket_->write(answer_.bytes);
    if (answer_.pace)
        pace_.start(*answer_.pace);
    sendMore();
}

bool Connection::isAllSent() const
{
    return !answer_.streamed || sent_ >= answer_.streamed->size;
}

void Connection::sendMore()
{
    if (!answering_)
        return;
    while (!answer_.pace && !isAllSent()) {
        if (socket_->bytesToWrite() > pieceBytes)
            return;
        sendPiece(pieceBytes);
    }
    if (isAllSent())
        end();
}

void Connection::sendPiece(qint64 most)
{
    if (isAllSent())
        return;
    const QByteArray piece = answer_.streamed->read(sent_, std::min(most, answer_.streamed->size - sent_));
    sent_ += piece.size();
    socket_->write(piece);
}

void Connection::end()
{
    pace_.stop();
    switch (answer_.end) {
    case WireAnswer::End::keepAlive:
        answering_ = false;
        // What came meanwhile waits in the socket or the buffer.
        QMetaObject::invokeMethod(this, &Connection::readRequests, Qt::QueuedConnection);
        break;
    case WireAnswer::End::close:
        socket_->disconnectFromHost();
        break;
    case WireAnswer::End::reset:
        // What is still to be written would be lost with the connection.
        if (socket_->bytesToWrite() == 0)
            reset();
        break;
    case WireAnswer::End::holdOpen:
        break;
    }
}

void Connection::reset()
{
    const linger atOnce{.l_onoff = 1, .l_linger = 0};
    ::setsockopt(static_cast<int>(socket_->socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    socket_->abort();
}

} // namespace orvane::demo
