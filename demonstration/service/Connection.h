#pragma once

#include "demonstration/service/WireAnswer.h"

#include <QObject>
#include <QTimer>

class QTcpSocket;

namespace orvane::demo {

class HttpServer;

/// One client's connection: takes requests one after the other and sends what the wire is to carry. Lives on the
/// server's thread and deletes itself when the connection ends.
class Connection : public QObject
{
    Q_OBJECT

public:
    Connection(QTcpSocket* socket, HttpServer& server, QObject* parent);

private:
    void readRequests();
    void answer(const Request& request);
    void make(const Request& request, const Response& response, const std::optional<Fault>& fault);
    void send(const Request& request, const Response& response, const std::optional<Fault>& fault);
    void begin(WireAnswer answer);
    void sendMore();
    void sendPiece(qint64 most);
    bool isAllSent() const;
    void end();
    void reset();

    QTcpSocket* socket_;
    HttpServer& server_;
    QByteArray buffer_;
    QTimer pace_;
    WireAnswer answer_;
    qint64 sent_ = 0;
    bool answering_ = false;
};

} // namespace orvane::demo
