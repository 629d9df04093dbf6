#include "platform/network/Connection.h"

#include <QHostInfo>
#include <QSslConfiguration>

#include <array>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// What is taken from the system ahead of the reader.
constexpr qint64 readAhead = qint64{1024} * 1024;
constexpr qsizetype pieceBytes = qsizetype{256} * 1024;
/// Pieces handed on before other events of the thread get their turn.
constexpr int piecesInARow = 8;
/// A host's further addresses get their turn after this long.
constexpr std::chrono::seconds patiencePerAddress{4};

QSslConfiguration tlsConfiguration()
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setPeerVerifyMode(QSslSocket::VerifyPeer);
    configuration.setAllowedNextProtocols({QSslConfiguration::NextProtocolHttp1_1});
    return configuration;
}

} // namespace

Origin Origin::of(const QUrl& url)
{
    const bool secure = url.scheme() == u"https";
    return {.secure = secure,
            .host = url.host(QUrl::FullyEncoded),
            .port = static_cast<quint16>(url.port(secure ? 443 : 80))};
}

Connection::Connection(Origin origin)
    : origin_(std::move(origin))
    , addressTimer_(this)
{
    addressTimer_.setSingleShot(true);
    connect(&addressTimer_, &QTimer::timeout, this, &Connection::giveUpAddress);
}

void Connection::open(std::function<void(const QList<QHostAddress>&)> admit)
{
    admit_ = std::move(admit);
    QMetaObject::invokeMethod(this, &Connection::lookUp, Qt::QueuedConnection);
}

void Connection::lookUp()
{
    if (const QHostAddress literal(origin_.host); !literal.isNull()) {
        useAddresses({literal});
        return;
    }
    QHostInfo::lookupHost(origin_.host, this, [this](const QHostInfo& host) {
        if (host.addresses().isEmpty())
            fail(host.errorString());
        else
            useAddresses(host.addresses());
    });
}

void Connection::useAddresses(const QList<QHostAddress>& addresses)
{
    try {
        admit_(addresses);
    } catch (const HttpError& error) {
        Q_EMIT failed(error);
        return;
    }
    untried_ = addresses;
    connectNext();
}

void Connection::connectNext()
{
    address_ = untried_.takeFirst();
    socket_ = std::make_unique<QSslSocket>();
    socket_->setReadBufferSize(readAhead);
    connect(socket_.get(), &QAbstractSocket::errorOccurred, this, &Connection::hearError);
    connect(socket_.get(), &QIODevice::readyRead, this, &Connection::arrived);
    if (!untried_.isEmpty())
        addressTimer_.start(patiencePerAddress);
    if (origin_.secure) {
        connect(socket_.get(), &QSslSocket::encrypted, this, &Connection::confirmOpen);
        socket_->setSslConfiguration(tlsConfiguration());
        socket_->connectToHostEncrypted(address_.toString(), origin_.port, origin_.host);
    } else {
        connect(socket_.get(), &QAbstractSocket::connected, this, &Connection::confirmOpen);
        socket_->connectToHost(address_, origin_.port);
    }
}

void Connection::giveUpAddress()
{
    addressTimer_.stop();
    socket_->disconnect(this);
    socket_.release()->deleteLater();
    connectNext();
}

void Connection::confirmOpen()
{
    addressTimer_.stop();
    socket_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    opened_ = true;
    Q_EMIT opened();
}

void Connection::hearError()
{
    if (opened_ && socket_->error() == QAbstractSocket::RemoteHostClosedError) {
        Q_EMIT closed();
        return;
    }
    const bool refusedTls = socket_->error() == QAbstractSocket::SslHandshakeFailedError;
    if (opened_ || untried_.isEmpty() || refusedTls)
        fail(socket_->errorString());
    else
        giveUpAddress();
}

void Connection::fail(const QString& words)
{
    Q_EMIT failed(HttpError(HttpError::Code::Transport, u"%1 (%2)"_s.arg(words, origin_.host)));
}

void Connection::read(const std::function<void(QByteArrayView)>& take)
{
    thread_local std::array<char, pieceBytes> piece;
    for (int index = 0; index < piecesInARow; ++index) {
        const qint64 count = socket_->read(piece.data(), pieceBytes);
        if (count <= 0)
            return;
        take(QByteArrayView(piece.data(), count));
    }
    if (socket_->bytesAvailable() > 0)
        QMetaObject::invokeMethod(this, &Connection::arrived, Qt::QueuedConnection);
}

void LetGo::operator()(Connection* connection) const
{
    connection->disconnect();
    connection->deleteLater();
}

} // namespace orvane
