#pragma once

#include <QList>
#include <QString>
#include <QUrl>

namespace orvane {

/// A domain that a credential may be sent to.
struct CredentialDomain
{
    QString domain;
    /// The domain's own name counts, and not only the names below it.
    bool itself = true;
    /// Names that end with a dot and the domain count.
    bool subdomains = true;
    /// Plain http will do, for a service on this machine; elsewhere everybody on the way could read the credential.
    bool unencrypted = false;

    bool operator==(const CredentialDomain&) const = default;
};

/// Every outside address that the program knows. Made once at the start and handed down.
struct Endpoints
{
    QUrl sunoHome;
    /// Domain of the Suno site: the token is captured on this host and the hosts below it only.
    QString sunoSiteDomain;
    /// The library feed, without a query.
    QUrl feed;
    /// Addresses of the project list, in the order in which they are tried.
    QList<QUrl> workspaceLists;
    /// A clip without an address of its own lies here, under "/" + id + ".mp3".
    QUrl cdn;
    QList<CredentialDomain> credentialDomains;
    QUrl productSite;
    QString productDomain;

    bool operator==(const Endpoints&) const = default;

    /// The addresses of the real services.
    static Endpoints production();
};

/// Whether a credential may go to the host of `url`, which is compared without case, and over its scheme.
bool mayReceiveCredential(const QList<CredentialDomain>& domains, const QUrl& url);

/// Whether `host` is `domain` or lies below it. Compared without case; an empty one of the two never does.
bool isOnDomain(const QString& host, const QString& domain);

} // namespace orvane
