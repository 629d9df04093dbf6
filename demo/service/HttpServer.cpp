#include "demo/service/HttpServer.h"

#include "demo/service/Connection.h"

#include <QTcpServer>
#include <QTcpSocket>

namespace orvane::demo {

/// Lives on the server's thread.
class HttpServer::Listener : public QObject
{
public:
    explicit Listener(HttpServer& server)
        : server_(server)
    {
    }

    /// The port it listens on; 0 where the machine has no loopback to give.
    quint16 listen()
    {
        tcp_ = new QTcpServer(this);
        tcp_->setListenBacklogSize(256);
        connect(tcp_, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* socket = tcp_->nextPendingConnection())
                new Connection(socket, server_, this);
        });
        return tcp_->listen(QHostAddress::LocalHost) ? tcp_->serverPort() : 0;
    }

private:
    HttpServer& server_;
    QTcpServer* tcp_ = nullptr;
};

HttpServer::HttpServer(Handler handler)
    : handler_(std::move(handler))
    , listener_(std::make_unique<Listener>(*this))
{
    thread_.setObjectName(QStringLiteral("stand-in service"));
    listener_->moveToThread(&thread_);
    thread_.start();
    QMetaObject::invokeMethod(
        listener_.get(), [this] { port_ = listener_->listen(); }, Qt::BlockingQueuedConnection);
    if (port_ == 0)
        qFatal("The stand-in service cannot listen on loopback.");
}

HttpServer::~HttpServer()
{
    // Connections and their sockets end on the thread they live on, which ends after that.
    listener_.release()->deleteLater();
    thread_.quit();
    thread_.wait();
}

void HttpServer::record(const SeenRequest& request)
{
    const std::lock_guard guard(lock_);
    seen_.append(request);
}

QList<SeenRequest> HttpServer::requests() const
{
    const std::lock_guard guard(lock_);
    return seen_;
}

void HttpServer::clearRequests()
{
    const std::lock_guard guard(lock_);
    seen_.clear();
}

} // namespace orvane::demo
