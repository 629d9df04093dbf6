#pragma once

#include "platform/network/Body.h"
#include "platform/network/Connection.h"
#include "platform/network/ConnectionPool.h"
#include "platform/network/HttpClient.h"
#include "platform/network/Redirect.h"
#include "platform/network/ResponseParser.h"

#include <QFuture>
#include <QObject>
#include <QPromise>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

namespace orvane {

/// What an exchange stands on; a test gives its own notion of which addresses are public.
struct ExchangeGround
{
    HttpClient::Limits limits;
    ConnectionPool& pool;
    std::function<bool(const QHostAddress&)> isPublicAddress = &isPublic;
};

/// One request along its hops to its final answer. Lives on the network thread, which it never blocks but for writing
/// to the disk. The future gets the answer or HttpError, once; then `ended` follows.
class Exchange final : public QObject
{
    Q_OBJECT

public:
    Exchange(HttpRequest request, std::unique_ptr<Body> body, ExchangeGround ground);
    ~Exchange() override;

    QFuture<HttpResponse> answer() { return promise_.future(); }

    void start();
    void cancel();

Q_SIGNALS:
    void ended();

private:
    void beginHop();
    void openConnection();
    void admit(const QList<QHostAddress>& addresses) const;
    void listen();
    void send();
    QByteArray requestHead() const;
    void receive();
    void receiveEnd();
    void takeHead(const ResponseHead& head);
    void takeBody(QByteArrayView bytes);
    bool retriesOnFreshConnection();
    bool settle();
    void followRedirect();
    void complete();
    void fail(const HttpError& error);
    void finish();
    void restartIdleTimer();
    void checkPace();

    HttpRequest request_;
    std::unique_ptr<Body> body_;
    ExchangeGround ground_;
    QPromise<HttpResponse> promise_;
    ConnectionPointer connection_;
    std::unique_ptr<ResponseParser> parser_;
    QUrl hop_;
    std::optional<QUrl> nextHop_;
    bool cameFromPublic_ = false;
    int redirects_ = 0;
    ResponseHead head_;
    bool headTaken_ = false;
    bool bodyWanted_ = true;
    bool done_ = false;
    QTimer idleTimer_;
    QTimer paceTimer_;
    qint64 windowBytes_ = 0;
};

} // namespace orvane
