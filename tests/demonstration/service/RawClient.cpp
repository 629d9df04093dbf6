#include "tests/demonstration/service/RawClient.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <netinet/in.h>
#include <optional>
#include <sys/socket.h>
#include <unistd.h>

namespace orvane::test {
namespace {

using End = RawAnswer::End;

constexpr int patienceSeconds = 30;

/// Bytes of the first answer in `received`; absent while it is not whole.
std::optional<qsizetype> wholeSize(const QByteArray& received, bool hasBody)
{
    const qsizetype headEnd = received.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return std::nullopt;
    const RawAnswer head{.head = received.first(headEnd)};
    const QList<QByteArray> lengths = head.values("Content-Length");
    if (!hasBody)
        return headEnd + 4;
    if (lengths.size() == 1) {
        bool isNumber = false;
        const qint64 length = lengths.first().toLongLong(&isNumber);
        const qint64 size = headEnd + 4 + length;
        return isNumber && length >= 0 && received.size() >= size ? std::optional(size) : std::nullopt;
    }
    const qsizetype last = received.indexOf("\r\n0\r\n\r\n", headEnd + 2);
    const bool isChunked = head.values("Transfer-Encoding").contains("chunked");
    return isChunked && last >= 0 ? std::optional(last + 7) : std::nullopt;
}

RawAnswer split(const QByteArray& received, End end)
{
    const qsizetype headEnd = received.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return {.head = received, .end = end};
    return {.head = received.first(headEnd), .body = received.sliced(headEnd + 4), .end = end};
}

} // namespace

int RawAnswer::status() const
{
    const QList<QByteArray> words = head.left(head.indexOf('\r')).split(' ');
    return words.size() > 1 && words[0] == "HTTP/1.1" ? words[1].toInt() : 0;
}

QList<QByteArray> RawAnswer::values(QByteArrayView name) const
{
    QList<QByteArray> found;
    for (const QByteArray& line : head.split('\n')) {
        const qsizetype colon = line.indexOf(':');
        if (colon > 0 && line.first(colon).compare(name, Qt::CaseInsensitive) == 0)
            found.append(line.sliced(colon + 1).trimmed());
    }
    return found;
}

RawConnection::RawConnection(quint16 port, const char* address)
    : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    const timeval patience{.tv_sec = patienceSeconds, .tv_usec = 0};
    ::setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_port = htons(port);
    ::inet_pton(AF_INET, address, &place.sin_addr);
    if (::connect(socket_, reinterpret_cast<const sockaddr*>(&place), sizeof place) != 0)
        qFatal("No connection to %s:%d: %s", address, port, std::strerror(errno));
}

RawConnection::~RawConnection()
{
    ::close(socket_);
}

void RawConnection::send(const QByteArray& bytes)
{
    if (::send(socket_, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL) != bytes.size())
        qFatal("A request was not taken: %s", std::strerror(errno));
}

bool RawConnection::receiveMore(End& end)
{
    QByteArray block(256 * 1024, Qt::Uninitialized);
    const ssize_t count = ::recv(socket_, block.data(), static_cast<std::size_t>(block.size()), 0);
    if (count > 0) {
        received_.append(block.constData(), count);
        return true;
    }
    if (count == 0)
        end = End::closed;
    else
        end = errno == ECONNRESET ? End::reset : End::silent;
    return false;
}

RawAnswer RawConnection::receive(bool hasBody)
{
    End end = End::whole;
    std::optional<qsizetype> size;
    while (!(size = wholeSize(received_, hasBody)) && receiveMore(end)) {
    }
    const RawAnswer answer = split(size ? received_.first(*size) : received_, end);
    received_.remove(0, size.value_or(received_.size()));
    return answer;
}

QByteArray RawConnection::receiveBytes(qsizetype count)
{
    End end = End::whole;
    while (received_.size() < count && receiveMore(end)) {
    }
    const QByteArray bytes = received_.first(std::min(count, received_.size()));
    received_.remove(0, bytes.size());
    return bytes;
}

bool RawConnection::isQuietAndOpen() const
{
    char byte = 0;
    const ssize_t count = ::recv(socket_, &byte, 1, MSG_PEEK | MSG_DONTWAIT);
    return count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK);
}

QByteArray requestText(const QByteArray& target, const RawHeaders& headers, const QByteArray& method)
{
    QByteArray request = method + ' ' + target + " HTTP/1.1\r\nHost: 127.0.0.1\r\n";
    for (const auto& [name, value] : headers)
        request += name + ": " + value + "\r\n";
    return request + "\r\n";
}

RawAnswer ask(quint16 port, const QByteArray& target, const RawHeaders& headers, const QByteArray& method)
{
    RawConnection connection(port);
    connection.send(requestText(target, headers, method));
    const bool hasBody = method != "HEAD";
    return connection.receive(hasBody);
}

} // namespace orvane::test
