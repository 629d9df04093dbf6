#pragma once

#include "demonstration/service/FaultScript.h"
#include "demonstration/service/HttpMessage.h"

#include <QList>
#include <QThread>
#include <QThreadPool>

#include <functional>
#include <memory>
#include <mutex>

namespace orvane::demo {

/// A request as it came over the wire.
struct SeenRequest
{
    QByteArray method;
    /// Path and query.
    QByteArray target;
    QByteArray host;
    QByteArray authorization;
    QByteArray cookie;
    QByteArray userAgent;
    QByteArray acceptEncoding;
    /// Status that was answered; 0 where none was.
    int status = 0;
};

/// An HTTP/1.1 server on 127.0.0.1, and under the same port on 127.0.0.2, on a thread of its own. The handler is called
/// on that thread; bodies that take time are made on others. Everything else may be called from any thread.
class HttpServer
{
public:
    using Handler = std::function<Response(const Request& request)>;

    explicit HttpServer(Handler handler);
    ~HttpServer();
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    quint16 port() const { return port_; }

    FaultScript& faults() { return faults_; }

    QList<SeenRequest> requests() const;
    void clearRequests();

private:
    class Listener;
    friend class Connection;

    void record(const SeenRequest& request);

    Handler handler_;
    FaultScript faults_;
    mutable std::mutex lock_;
    QList<SeenRequest> seen_;
    /// Its destructor waits for what is being made.
    QThreadPool makers_;
    QThread thread_;
    quint16 port_ = 0;
    std::unique_ptr<Listener> listener_;
};

} // namespace orvane::demo
