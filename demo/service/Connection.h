#pragma once

#include "demo/service/WireAnswer.h"

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
    void begin(WireAnswer answer);
    void sendMore();
    void dribble();
    void end();
    void reset();

    QTcpSocket* socket_;
    HttpServer& server_;
    QByteArray buffer_;
    QTimer second_;
    WireAnswer answer_;
    qint64 sent_ = 0;
    bool answering_ = false;
};

} // namespace orvane::demo
