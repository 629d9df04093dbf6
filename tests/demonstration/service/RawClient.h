#pragma once

#include <QByteArray>
#include <QList>

#include <utility>

namespace orvane::test {

using RawHeaders = QList<std::pair<QByteArray, QByteArray>>;

/// Everything that came over one connection until the server ended it or the answer was whole.
struct RawAnswer
{
    enum class End
    {
        /// The stated length, or the last chunk, has come; the connection stands.
        whole,
        closed,
        reset,
        /// Nothing came for half a minute.
        silent
    };

    QByteArray head;
    QByteArray body;
    End end = End::silent;

    /// The status in the head; 0 without one.
    int status() const;
    /// Values of all headers of that name.
    QList<QByteArray> values(QByteArrayView name) const;
};

/// A bare TCP connection to the loopback port, on the socket calls of the system, so that nothing is smoothed over.
class RawConnection
{
public:
    /// Connects to 127.0.0.1, or to another address of the loopback.
    explicit RawConnection(quint16 port, const char* address = "127.0.0.1");
    ~RawConnection();
    RawConnection(const RawConnection&) = delete;
    RawConnection& operator=(const RawConnection&) = delete;

    void send(const QByteArray& bytes);
    /// Reads until the stated length or the last chunk has come, or the connection ends.
    RawAnswer receive(bool hasBody = true);
    /// Reads until that many bytes have come; fewer where the connection ends.
    QByteArray receiveBytes(qsizetype count);
    /// Whether nothing waits to be read and the other side has not ended the connection.
    bool isQuietAndOpen() const;

private:
    bool receiveMore(RawAnswer::End& end);

    int socket_;
    QByteArray received_;
};

/// Text of a request with these headers.
QByteArray requestText(const QByteArray& target, const RawHeaders& headers = {}, const QByteArray& method = "GET");

/// Sends one request over a connection of its own, and reads the answer.
RawAnswer ask(quint16 port, const QByteArray& target, const RawHeaders& headers = {}, const QByteArray& method = "GET");

} // namespace orvane::test
