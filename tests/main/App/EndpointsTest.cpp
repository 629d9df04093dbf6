#include "main/App/Endpoints.h"

#include <QSet>

#include <gmock/gmock.h>

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

QUrl at(const QString& host, const QString& scheme = u"https"_s)
{
    QUrl url;
    url.setScheme(scheme);
    url.setHost(host, QUrl::DecodedMode);
    return url;
}

bool mayReceive(const QString& host)
{
    return mayReceiveCredential(Endpoints::production().credentialDomains, at(host));
}

TEST(CredentialDomains, holdTheServiceAndWhatLiesBelowIt)
{
    for (const QString& host : {u"suno.com"_s, u"studio-api.prod.suno.com"_s, u"SUNO.com"_s, u"Api.Suno.COM"_s})
        EXPECT_TRUE(mayReceive(host)) << qPrintable(host);
}

TEST(CredentialDomains, holdWhatLiesBelowTheFileDomainButNotTheDomainItself)
{
    EXPECT_TRUE(mayReceive(u"cdn1.suno.ai"_s));
    EXPECT_TRUE(mayReceive(u"CDN2.SUNO.AI"_s));
    EXPECT_FALSE(mayReceive(u"suno.ai"_s));
    EXPECT_FALSE(mayReceive(u"Suno.AI"_s));
}

TEST(CredentialDomains, holdNoNameThatOnlyLooksLikeTheService)
{
    for (const QString& host : {u"evilsuno.com"_s, u"suno.com.evil.example"_s, u"evilsuno.ai"_s, u"suno.co"_s, u"com"_s,
                                u"suno.com."_s, u" suno.com"_s, u".suno.ai.example"_s, u"localhost"_s, QString()})
        EXPECT_FALSE(mayReceive(host)) << qPrintable(host);
}

TEST(CredentialDomains, areNotTheProductSite)
{
    EXPECT_FALSE(mayReceive(Endpoints::production().productDomain));
}

TEST(CredentialDomains, canLeaveOutWhatLiesBelow)
{
    const QList<CredentialDomain> itselfOnly = {{.domain = u"127.0.0.1"_s, .itself = true, .subdomains = false}};
    EXPECT_TRUE(mayReceiveCredential(itselfOnly, at(u"127.0.0.1"_s)));
    EXPECT_FALSE(mayReceiveCredential(itselfOnly, at(u"a.127.0.0.1"_s)));
    EXPECT_FALSE(mayReceiveCredential({}, at(u"suno.com"_s)));
}

TEST(CredentialDomains, areReachedOverAnEncryptedConnectionOnly)
{
    const QList<CredentialDomain> real = Endpoints::production().credentialDomains;
    for (const CredentialDomain& rule : real)
        EXPECT_FALSE(rule.unencrypted) << qPrintable(rule.domain);
    for (const QString& scheme : {u"http"_s, u"ws"_s, u"ftp"_s, QString()}) {
        for (const QString& host : {u"suno.com"_s, u"studio-api.prod.suno.com"_s, u"cdn1.suno.ai"_s})
            EXPECT_FALSE(mayReceiveCredential(real, at(host, scheme))) << qPrintable(host + u' ' + scheme);
    }
}

TEST(CredentialDomains, ofTheRealServicesHoldNoNameOfThisMachine)
{
    const QList<CredentialDomain> real = Endpoints::production().credentialDomains;
    for (const QString& host : {u"127.0.0.1"_s, u"localhost"_s, u"::1"_s, u"0.0.0.0"_s}) {
        EXPECT_FALSE(mayReceiveCredential(real, at(host, u"http"_s))) << qPrintable(host);
        EXPECT_FALSE(mayReceiveCredential(real, at(host))) << qPrintable(host);
    }
}

TEST(CredentialDomains, areReachedInTheClearOnlyWhereARuleSaysSo)
{
    const QList<CredentialDomain> here = {{.domain = u"127.0.0.1"_s, .unencrypted = true}};
    EXPECT_TRUE(mayReceiveCredential(here, at(u"127.0.0.1"_s, u"http"_s)));
    EXPECT_TRUE(mayReceiveCredential(here, at(u"127.0.0.1"_s)));
    EXPECT_FALSE(mayReceiveCredential({{.domain = u"127.0.0.1"_s}}, at(u"127.0.0.1"_s, u"http"_s)));
}

TEST(CredentialDomains, giveAnEmptyRuleNoMeaning)
{
    const QList<CredentialDomain> empty = {{.domain = QString(), .itself = true, .subdomains = true}};
    EXPECT_FALSE(mayReceiveCredential(empty, at(QString())));
    EXPECT_FALSE(mayReceiveCredential(empty, at(u"host."_s)));
}

TEST(IsOnDomain, takesTheDomainAndWhatLiesBelowWithoutCase)
{
    EXPECT_TRUE(isOnDomain(u"suno.com"_s, u"suno.com"_s));
    EXPECT_TRUE(isOnDomain(u"www.Suno.com"_s, u"suno.COM"_s));
    EXPECT_TRUE(isOnDomain(u"a.b.suno.com"_s, u"suno.com"_s));
}

TEST(IsOnDomain, takesNoOtherName)
{
    EXPECT_FALSE(isOnDomain(u"evilsuno.com"_s, u"suno.com"_s));
    EXPECT_FALSE(isOnDomain(u"suno.com.example"_s, u"suno.com"_s));
    EXPECT_FALSE(isOnDomain(u"com"_s, u"suno.com"_s));
    EXPECT_FALSE(isOnDomain(QString(), u"suno.com"_s));
    EXPECT_FALSE(isOnDomain(QString(), QString()));
    EXPECT_FALSE(isOnDomain(u"host."_s, QString()));
}

TEST(Endpoints, ofTheRealServicesAreAllEncrypted)
{
    const Endpoints real = Endpoints::production();
    QList<QUrl> all = {real.sunoHome, real.feed, real.cdn, real.productSite};
    all += real.workspaceLists;
    for (const QUrl& address : all) {
        EXPECT_TRUE(address.isValid());
        EXPECT_EQ(address.scheme(), u"https"_s) << qPrintable(address.toString());
    }
}

TEST(Endpoints, tryTheProjectListsInTheirOrder)
{
    QStringList paths;
    for (const QUrl& address : Endpoints::production().workspaceLists)
        paths.append(address.path());
    EXPECT_EQ(paths, (QStringList{u"/api/project/me"_s, u"/api/project/"_s, u"/api/projects"_s}));
    EXPECT_EQ(Endpoints::production().feed.path(), u"/api/feed/v2"_s);
}

TEST(Endpoints, nameTheProductDomainOfTheBuild)
{
    const Endpoints real = Endpoints::production();
    EXPECT_EQ(real.productDomain, QString::fromUtf16(DOMAIN_OF_THIS_BUILD));
    EXPECT_EQ(real.productSite.host(), real.productDomain);
}

} // namespace
} // namespace orvane::test
