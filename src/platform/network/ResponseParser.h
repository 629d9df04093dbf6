#pragma once

#include "platform/network/HttpClient.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <functional>
#include <optional>

namespace orvane {

/// What stands before the body of an answer.
struct ResponseHead
{
    int status = 0;
    QList<HttpHeader> headers;
    /// Bytes that the body will have; absent for a chunked body, one that ends with the connection, and one that an
    /// answer of this status cannot have.
    std::optional<qint64> contentLength;
    bool chunked = false;
    /// Whether the server will take another request on the same connection.
    bool keepAlive = false;

    /// Value of the first header of that name, compared without case; absent if there is none.
    std::optional<QByteArray> header(QByteArrayView name) const;
};

/// Reads one HTTP/1 answer to a GET from bytes that come in pieces of any size (RFC 9112).
///
/// It takes nothing on trust: an answer is whole only when its framing says so to the last byte. Everything else
/// throws HttpError with the code Transport: what is not HTTP, lengths that are negative, too large or contradict each
/// other, chunks whose size cannot be read or that do not end where they should, an end before the body's end, bytes
/// behind it. Interim answers (1xx) are passed over. Knows no socket.
class ResponseParser
{
public:
    /// Largest head and largest trailer, bytes.
    static constexpr qint64 maxHeadBytes = qint64{256} * 1024;

    /// Called once, when the head is complete. May throw: nothing further is then called.
    std::function<void(const ResponseHead&)> onHead;
    /// Called for each piece of the body, without the framing.
    std::function<void(QByteArrayView)> onBody;

    /// Takes the next bytes off the wire.
    void feed(QByteArrayView bytes);

    /// The connection has ended: the answer is whole now, or it throws.
    void end();

    /// The answer is whole.
    bool isDone() const { return state_ == State::done; }

    /// Not one byte has come yet.
    bool isUntouched() const { return received_ == 0; }

private:
    enum class State
    {
        statusLine,
        headerLine,
        sizedBody,
        chunkSize,
        chunkData,
        chunkEnd,
        trailer,
        untilClose,
        done
    };

    QByteArrayView step(QByteArrayView bytes);
    QByteArrayView takeLine(QByteArrayView bytes);
    QByteArrayView takeBody(QByteArrayView bytes, State next);
    void readLine(const QByteArray& line);
    void readStatusLine(const QByteArray& line);
    void readHeaderLine(const QByteArray& line);
    void readChunkSize(const QByteArray& line);
    void endHead();
    void chooseFraming();

    State state_ = State::statusLine;
    ResponseHead head_;
    bool http11_ = false;
    QByteArray line_;
    qint64 lineBytes_ = 0;
    qint64 remaining_ = 0;
    qint64 bodyBytes_ = 0;
    qint64 received_ = 0;
};

} // namespace orvane
