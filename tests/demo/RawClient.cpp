#include "tests/demo/RawClient.h"

#include <QTcpSocket>

namespace orvane::test {
namespace {

constexpr int patience = 30'000;

bool isWhole(const RawAnswer& answer)
{
    const QList<QByteArray> lengths = answer.values("Content-Length");
    if (lengths.size() == 1)
        return answer.body.size() == lengths.first().toLongLong();
    return answer.values("Transfer-Encoding").contains("chunked") && answer.body.endsWith("\r\n0\r\n\r\n");
}

void split(const QByteArray& received, RawAnswer& answer)
{
    const qsizetype end = received.indexOf("\r\n\r\n");
    answer.head = end < 0 ? received : received.first(end);
    answer.body = end < 0 ? QByteArray() : received.sliced(end + 4);
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

RawAnswer ask(quint16 port, const QByteArray& target, const QList<std::pair<QByteArray, QByteArray>>& headers,
              const QByteArray& method)
{
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, port);
    socket.waitForConnected(patience);
    QByteArray request = method + ' ' + target + " HTTP/1.1\r\nHost: 127.0.0.1\r\n";
    for (const auto& [name, value] : headers)
        request += name + ": " + value + "\r\n";
    socket.write(request + "\r\n");

    RawAnswer answer;
    QByteArray received;
    while (!isWhole(answer) && socket.waitForReadyRead(patience)) {
        received += socket.readAll();
        split(received, answer);
    }
    answer.wasReset = received.contains("HTTP") && socket.error() != QAbstractSocket::RemoteHostClosedError &&
                      socket.error() != QAbstractSocket::UnknownSocketError;
    answer.wasClosed = socket.state() == QAbstractSocket::UnconnectedState;
    return answer;
}

} // namespace orvane::test
