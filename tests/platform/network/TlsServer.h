#pragma once

#include <QByteArray>
#include <QList>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QString>
#include <QTemporaryDir>
#include <QUrl>

namespace orvane::test {

/// A certificate and its key.
struct Identity
{
    QSslCertificate certificate;
    QSslKey key;
};

/// Issues certificates, with the openssl tool, that are valid where its own is trusted.
class Authority
{
public:
    Authority();

    const QSslCertificate& certificate() const { return certificate_; }

    /// For a server with this alternative name ("IP:127.0.0.1", "DNS:host.example"). Negative days have passed.
    Identity issue(const QByteArray& alternativeName, int days = 2) const;
    /// Signed by nobody but itself.
    Identity selfSigned(const QByteArray& alternativeName) const;

private:
    void openssl(const QStringList& arguments) const;

    QString file(const QString& name) const { return folder_.filePath(name); }

    void writeExtensions(const QByteArray& alternativeName) const;
    Identity read(const QString& name) const;

    QTemporaryDir folder_;
    QSslCertificate certificate_;
};

/// Answers every request over TLS with the same bytes, from the event loop of its thread.
class TlsServer
{
public:
    TlsServer(const Identity& identity, QByteArray answer);

    QUrl url(const QString& target = QStringLiteral("/")) const;

    /// The bytes of all requests together.
    const QByteArray& received() const { return received_; }

private:
    QSslServer server_;
    QByteArray answer_;
    QByteArray received_;
};

/// Makes a certificate trusted by everything in this process while it lives.
class Trust
{
public:
    explicit Trust(const QSslCertificate& authority);
    ~Trust();
    Trust(const Trust&) = delete;
    Trust& operator=(const Trust&) = delete;

private:
    QSslConfiguration before_;
};

} // namespace orvane::test
