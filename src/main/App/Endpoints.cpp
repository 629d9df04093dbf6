#include "main/App/Endpoints.h"

#include "main/App/ProductDomain.h"

#include <algorithm>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

Endpoints Endpoints::production()
{
    const QString productDomain = QString::fromUtf16(ORVANE_PRODUCT_DOMAIN);
    return {
        .sunoHome = QUrl(u"https://suno.com/"_s),
        .sunoSiteDomain = u"suno.com"_s,
        .feed = QUrl(u"https://studio-api.prod.suno.com/api/feed/v2"_s),
        .workspaceLists = {QUrl(u"https://studio-api.prod.suno.com/api/project/me"_s),
                           QUrl(u"https://studio-api.prod.suno.com/api/project/"_s),
                           QUrl(u"https://studio-api.prod.suno.com/api/projects"_s)},
        .cdn = QUrl(u"https://cdn1.suno.ai"_s),
        .credentialDomains = {{.domain = u"suno.com"_s, .itself = true, .subdomains = true},
                              {.domain = u"suno.ai"_s, .itself = false, .subdomains = true}},
        .productSite = QUrl(u"https://"_s + productDomain + u'/'),
        .productDomain = productDomain,
    };
}

bool isOnDomain(const QString& host, const QString& domain)
{
    if (host.isEmpty() || domain.isEmpty())
        return false;
    return host.compare(domain, Qt::CaseInsensitive) == 0 || host.endsWith(u'.' + domain, Qt::CaseInsensitive);
}

bool mayReceiveCredential(const QList<CredentialDomain>& domains, const QUrl& url)
{
    const QString host = url.host();
    const bool encrypted = url.scheme() == u"https";
    return std::any_of(domains.begin(), domains.end(), [&host, encrypted](const CredentialDomain& rule) {
        const bool same = host.compare(rule.domain, Qt::CaseInsensitive) == 0;
        return isOnDomain(host, rule.domain) && (same ? rule.itself : rule.subdomains) &&
               (encrypted || rule.unencrypted);
    });
}

} // namespace orvane
