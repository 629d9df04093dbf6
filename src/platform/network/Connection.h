#pragma once

#include "platform/network/HttpClient.h"

#include <QByteArrayView>
#include <QHostAddress>
#include <QList>
#include <QObject>
#include <QSslSocket>
#include <QTimer>
#include <QUrl>

#include <functional>
#include <memory>

namespace orvane {

/// Scheme, host and port: what a connection is made to.
struct Origin
{
    bool secure = false;
    /// In its encoded form, an IPv6 address without brackets.
    QString host;
    quint16 port = 0;

    bool operator==(const Origin&) const = default;

    static Origin of(const QUrl& url);
};

/// Looks up the addresses of a host and connects to one of them, over TLS where the origin is secure. A certificate
/// that cannot be verified is a failure. Lives on the network thread.
class Connection final : public QObject
{
    Q_OBJECT

public:
    explicit Connection(Origin origin);

    /// Ends in `opened` or `failed`, never within this call. `admit` sees the host's addresses before any of them is
    /// connected to, and throws HttpError to refuse them.
    void open(std::function<void(const QList<QHostAddress>&)> admit);

    void write(const QByteArray& bytes) { socket_->write(bytes); }

    /// Hands what has come to `take` in pieces; they are valid during the call only.
    void read(const std::function<void(QByteArrayView)>& take);

    const Origin& origin() const { return origin_; }

    const QHostAddress& address() const { return address_; }

    bool isOpen() const { return opened_ && socket_->state() == QAbstractSocket::ConnectedState; }

    /// An answer has been read whole on it: it is no longer fresh.
    bool isUsed() const { return used_; }

    void markUsed() { used_ = true; }

Q_SIGNALS:
    void opened();
    void failed(const orvane::HttpError& error);
    /// More bytes can be read.
    void arrived();
    /// The other side has ended it; everything that came before has been announced by `arrived`.
    void closed();

private:
    void lookUp();
    void useAddresses(const QList<QHostAddress>& addresses);
    void connectNext();
    void giveUpAddress();
    void confirmOpen();
    void hearError();
    void fail(const QString& words);

    Origin origin_;
    std::function<void(const QList<QHostAddress>&)> admit_;
    QList<QHostAddress> untried_;
    QHostAddress address_;
    std::unique_ptr<QSslSocket> socket_;
    QTimer addressTimer_;
    bool opened_ = false;
    bool used_ = false;
};

/// Deletes from the event loop, after any signal of the connection that is being delivered, and lets go of it at once.
struct LetGo
{
    void operator()(Connection* connection) const;
};

using ConnectionPointer = std::unique_ptr<Connection, LetGo>;

} // namespace orvane
