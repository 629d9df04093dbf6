#include "tests/platform/network/TlsServer.h"

#include <QFile>
#include <QProcess>
#include <QSslSocket>

#include <stdexcept>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;

Authority::Authority()
{
    openssl({u"req"_s, u"-x509"_s, u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s, u"ec_paramgen_curve:P-256"_s, u"-nodes"_s,
             u"-days"_s, u"2"_s, u"-subj"_s, u"/CN=Test authority"_s, u"-keyout"_s, file(u"authority.key"_s), u"-out"_s,
             file(u"authority.pem"_s)});
    certificate_ = read(u"authority"_s).certificate;
}

Identity Authority::issue(const QByteArray& alternativeName, int days) const
{
    writeExtensions(alternativeName);
    openssl({u"req"_s, u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s, u"ec_paramgen_curve:P-256"_s, u"-nodes"_s, u"-subj"_s,
             u"/CN=Test server"_s, u"-keyout"_s, file(u"server.key"_s), u"-out"_s, file(u"server.csr"_s)});
    openssl({u"x509"_s, u"-req"_s, u"-in"_s, file(u"server.csr"_s), u"-CA"_s, file(u"authority.pem"_s), u"-CAkey"_s,
             file(u"authority.key"_s), u"-CAcreateserial"_s, u"-days"_s, QString::number(days), u"-extfile"_s,
             file(u"extensions"_s), u"-out"_s, file(u"server.pem"_s)});
    return read(u"server"_s);
}

Identity Authority::selfSigned(const QByteArray& alternativeName) const
{
    openssl({u"req"_s, u"-x509"_s, u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s, u"ec_paramgen_curve:P-256"_s, u"-nodes"_s,
             u"-days"_s, u"2"_s, u"-subj"_s, u"/CN=Test server"_s, u"-addext"_s,
             u"subjectAltName="_s + QString::fromLatin1(alternativeName), u"-keyout"_s, file(u"server.key"_s),
             u"-out"_s, file(u"server.pem"_s)});
    return read(u"server"_s);
}

void Authority::openssl(const QStringList& arguments) const
{
    QProcess process;
    process.start(u"openssl"_s, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        throw std::runtime_error("openssl: " + process.readAllStandardError().toStdString());
}

void Authority::writeExtensions(const QByteArray& alternativeName) const
{
    QFile extensions(file(u"extensions"_s));
    if (!extensions.open(QIODevice::WriteOnly) || extensions.write("subjectAltName=" + alternativeName) < 0)
        throw std::runtime_error("cannot write the extensions");
}

Identity Authority::read(const QString& name) const
{
    QFile certificate(file(name + u".pem"_s));
    QFile key(file(name + u".key"_s));
    if (!certificate.open(QIODevice::ReadOnly) || !key.open(QIODevice::ReadOnly))
        throw std::runtime_error("no certificate");
    return {.certificate = QSslCertificate(&certificate), .key = QSslKey(&key, QSsl::Ec)};
}

TlsServer::TlsServer(const Identity& identity, QByteArray answer)
    : answer_(std::move(answer))
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificate(identity.certificate);
    configuration.setPrivateKey(identity.key);
    configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
    server_.setSslConfiguration(configuration);
    QObject::connect(&server_, &QTcpServer::pendingConnectionAvailable, &server_, [this] {
        QTcpSocket* const connection = server_.nextPendingConnection();
        QObject::connect(connection, &QIODevice::readyRead, connection, [this, connection] {
            received_ += connection->readAll();
            if (received_.endsWith("\r\n\r\n")) {
                connection->write(answer_);
                connection->disconnectFromHost();
            }
        });
    });
    if (!server_.listen(QHostAddress::LocalHost))
        throw std::runtime_error("cannot listen");
}

QUrl TlsServer::url(const QString& target) const
{
    return QUrl(u"https://127.0.0.1:%1%2"_s.arg(server_.serverPort()).arg(target));
}

Trust::Trust(const QSslCertificate& authority)
    : before_(QSslConfiguration::defaultConfiguration())
{
    QSslConfiguration trusting = before_;
    trusting.addCaCertificate(authority);
    QSslConfiguration::setDefaultConfiguration(trusting);
}

Trust::~Trust()
{
    QSslConfiguration::setDefaultConfiguration(before_);
}

} // namespace orvane::test
