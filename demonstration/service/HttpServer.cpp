#include "demonstration/service/HttpServer.h"

#include "demonstration/service/Connection.h"

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
        takeConnectionsOf(here_);
        takeConnectionsOf(elsewhere_);
    }

    /// The port it listens on, the same for both hosts; 0 where the machine has no loopback to give.
    quint16 listen()
    {
        constexpr int attempts = 20;
        for (int attempt = 0; attempt < attempts; ++attempt) {
            const quint16 port = listenOn(here_, QHostAddress(QHostAddress::LocalHost), 0);
            if (port == 0 || listenOn(elsewhere_, QHostAddress(elsewhere), port) == port)
                return port;
            here_.close();
        }
        return 0;
    }

private:
    static constexpr quint32 elsewhere = 0x7F00'0002;

    quint16 listenOn(QTcpServer& server, const QHostAddress& address, quint16 port)
    {
        return server.listen(address, port) ? server.serverPort() : 0;
    }

    void takeConnectionsOf(QTcpServer& server)
    {
        server.setListenBacklogSize(256);
        connect(&server, &QTcpServer::newConnection, this, [this, &server] {
            while (QTcpSocket* socket = server.nextPendingConnection())
                new Connection(socket, server_, this);
        });
    }

    HttpServer& server_;
    QTcpServer here_{this};
    QTcpServer elsewhere_{this};
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
