#pragma once

#include <QByteArray>
#include <QList>

#include <utility>

namespace orvane::test {

/// Everything that came over one connection until the server ended it or the answer was whole.
struct RawAnswer
{
    QByteArray head;
    QByteArray body;
    /// The connection ended in a reset.
    bool wasReset = false;
    /// The server ended the connection.
    bool wasClosed = false;

    /// The status in the head; 0 without one.
    int status() const;
    /// Values of all headers of that name.
    QList<QByteArray> values(QByteArrayView name) const;
};

/// Sends one GET (or another method) with the given headers to the loopback port, and reads until the stated length has
/// come, or the connection ends.
RawAnswer ask(quint16 port, const QByteArray& target, const QList<std::pair<QByteArray, QByteArray>>& headers = {},
              const QByteArray& method = "GET");

} // namespace orvane::test
