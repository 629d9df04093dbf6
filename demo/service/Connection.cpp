#include "demo/service/Connection.h"

#include "demo/service/HttpServer.h"

#include <QTcpSocket>

#include <sys/socket.h>

namespace orvane::demo {
namespace {

constexpr qint64 blockBytes = 256 * 1024;

} // namespace

Connection::Connection(QTcpSocket* socket, HttpServer& server, QObject* parent)
    : QObject(parent)
    , socket_(socket)
    , server_(server)
{
    socket_->setParent(this);
    socket_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    second_.setInterval(1000);
    connect(socket_, &QTcpSocket::readyRead, this, &Connection::readRequests);
    connect(socket_, &QTcpSocket::bytesWritten, this, &Connection::sendMore);
    connect(socket_, &QTcpSocket::disconnected, this, &QObject::deleteLater);
    connect(&second_, &QTimer::timeout, this, &Connection::dribble);
}

void Connection::readRequests()
{
    buffer_ += socket_->readAll();
    while (!answering_) {
        bool isBad = false;
        const std::optional<Request> request = takeRequest(buffer_, isBad);
        if (isBad)
            return reset();
        if (!request)
            return;
        answer(*request);
    }
}

void Connection::answer(const Request& request)
{
    const std::optional<Fault> fault = server_.faults_.take(request.target);
    Request asked = request;
    if (fault && fault->kind == Fault::Kind::samePageForEver)
        asked.target = asked.target.split('?').first() + "?page=1";
    const Response response = server_.handler_(asked);
    WireAnswer wire = fault ? badlyAnswered(request, response, *fault) : wellAnswered(request, response);
    server_.record({.method = request.method,
                    .target = request.target,
                    .host = request.header("Host"),
                    .authorization = request.header("Authorization"),
                    .cookie = request.header("Cookie"),
                    .userAgent = request.header("User-Agent"),
                    .acceptEncoding = request.header("Accept-Encoding"),
                    .status = wire.status});
    begin(std::move(wire));
}

void Connection::begin(WireAnswer answer)
{
    answering_ = true;
    answer_ = std::move(answer);
    sent_ = 0;
    socket_->write(answer_.bytes);
    if (!answer_.dribbled.isEmpty())
        second_.start();
    sendMore();
}

void Connection::sendMore()
{
    if (!answering_ || second_.isActive())
        return;
    while (answer_.streamed && sent_ < answer_.streamed->size) {
        if (socket_->bytesToWrite() > blockBytes)
            return;
        const QByteArray block = answer_.streamed->read(sent_, std::min(blockBytes, answer_.streamed->size - sent_));
        sent_ += block.size();
        socket_->write(block);
    }
    end();
}

void Connection::dribble()
{
    if (sent_ < answer_.dribbled.size())
        socket_->write(answer_.dribbled.sliced(sent_++, 1));
    if (sent_ < answer_.dribbled.size())
        return;
    second_.stop();
    end();
}

void Connection::end()
{
    switch (answer_.end) {
    case WireAnswer::End::keepAlive:
        answering_ = false;
        break;
    case WireAnswer::End::close:
        socket_->disconnectFromHost();
        break;
    case WireAnswer::End::reset:
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
