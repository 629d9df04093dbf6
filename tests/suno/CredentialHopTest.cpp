#include "main/App/Endpoints.h"
#include "tests/suno/EngineTest.h"

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using testing::ElementsAre;

/// The credential of each request that the server saw.
QList<QByteArray> credentials(const ScriptedServer& server)
{
    QList<QByteArray> found;
    for (const QByteArray& head : server.requests())
        found.append(headerIn(head, "Authorization").value_or("none"));
    return found;
}

Script redirectTo(const QUrl& target)
{
    return {send(answer("302 Found", "Location: " + target.toEncoded() + "\r\n", {}))};
}

class CredentialHop : public EngineTest
{
protected:
    /// The same machine under an address that no credential may go to.
    ScriptedServer stranger{QStringLiteral("127.0.0.2")};
};

TEST_F(CredentialHop, eachPageTakesTheTokenOfItsMoment)
{
    int asked = 0;
    engine.tokenProvider = [&asked] { return u"token-%1"_s.arg(++asked); };
    server.play(feedPage({u"a"_s}));
    server.play(feedPage({u"b"_s}));
    server.play(feedPage({}));
    fetch();
    EXPECT_THAT(credentials(server), ElementsAre("Bearer token-1", "Bearer token-2", "Bearer token-3"));
}

TEST_F(CredentialHop, theAttemptsOfOnePageShareItsToken)
{
    int asked = 0;
    engine.tokenProvider = [&asked] { return u"token-%1"_s.arg(++asked); };
    server.play(status(500));
    server.play(broken());
    server.play(feedPage({}));
    fetch();
    EXPECT_THAT(credentials(server), ElementsAre("Bearer token-1", "Bearer token-1", "Bearer token-1"));
}

TEST_F(CredentialHop, theProviderHidesTheArgumentAlsoWhenItHasNothing)
{
    engine.tokenProvider = [] { return QString(); };
    server.play(status(401));
    const auto thrown = fetchError();
    ASSERT_TRUE(thrown);
    EXPECT_EQ(thrown->code(), 401);
    EXPECT_THAT(credentials(server), ElementsAre("none"));
}

TEST_F(CredentialHop, anEmptyTokenSendsNoHeaderAndTheReadFailsWithTheRejection)
{
    server.play(status(401));
    const auto thrown = fetchError(QString());
    ASSERT_TRUE(thrown);
    EXPECT_EQ(thrown->sentence(), u"Suno rejected the session (HTTP 401). Open the Suno tab and sign in again."_s);
    EXPECT_EQ(headerIn(server.requests().front(), "Authorization"), std::nullopt);
    EXPECT_EQ(headerIn(server.requests().front(), "Cookie"), std::nullopt);
}

TEST_F(CredentialHop, aTokenWithSurroundingQuotesAndATrailingNewlineIsSentTrimmed)
{
    server.play(feedPage({}));
    fetch({}, u"\"abc\"\n"_s);
    EXPECT_THAT(credentials(server), ElementsAre("Bearer abc"));
}

TEST_F(CredentialHop, aPastedCookieLineGoesOutAsACookie)
{
    server.play(feedPage({}));
    fetch({}, u"__session=abc; x=y"_s);
    EXPECT_EQ(headerIn(server.requests().front(), "Cookie"), "__session=abc; x=y");
    EXPECT_EQ(headerIn(server.requests().front(), "Authorization"), std::nullopt);
}

TEST_F(CredentialHop, aRedirectToAnotherHostTakesNoCredentialAlong)
{
    server.play(redirectTo(stranger.url(u"/page"_s)));
    stranger.play(feedPage({}));
    fetch();
    EXPECT_THAT(credentials(server), ElementsAre("Bearer token"));
    EXPECT_THAT(credentials(stranger), ElementsAre("none"));
}

TEST_F(CredentialHop, aRedirectBackHomeIsAuthorisedAgain)
{
    server.play(redirectTo(stranger.url()));
    stranger.play(redirectTo(server.url(u"/again"_s)));
    server.play(feedPage({}));
    fetch();
    EXPECT_THAT(credentials(server), ElementsAre("Bearer token", "Bearer token"));
    EXPECT_THAT(credentials(stranger), ElementsAre("none"));
}

TEST_F(CredentialHop, anAssetElsewhereIsFetchedWithoutACredential)
{
    stranger.play({send(answer("200 OK", {}, "sound"))});
    EXPECT_EQ(download(stranger.url(u"/a.mp3"_s).toString(), target()), DownloadOutcome::downloaded());
    EXPECT_THAT(credentials(stranger), ElementsAre("none"));
}

TEST_F(CredentialHop, anAssetAtHomeIsFetchedWithOneTokenForAllItsAttempts)
{
    int asked = 0;
    engine.tokenProvider = [&asked] { return u"token-%1"_s.arg(++asked); };
    server.play(status(503));
    server.play({send(answer("200 OK", {}, "sound"))});
    EXPECT_EQ(download(), DownloadOutcome::downloaded());
    EXPECT_THAT(credentials(server), ElementsAre("Bearer token-1", "Bearer token-1"));
}

TEST_F(CredentialHop, theRealDomainsAreSunosOwnAndNoOther)
{
    const Engine real(client, clock, Endpoints::production());
    HttpRequest request;
    real.authorize(request, u"abc"_s);
    const Endpoints endpoints = Endpoints::production();
    const QString site = endpoints.sunoSiteDomain;
    const QString media = endpoints.cdn.host().section(u'.', 1);
    const auto sent = [&request](const QString& host) {
        return request.credentialFor(QUrl(u"https://"_s + host + u"/x"_s)).has_value();
    };
    for (const QString& host : {site, u"api."_s + site, u"a.b."_s + site, u"cdn1."_s + media, site.toUpper()})
        EXPECT_TRUE(sent(host)) << qPrintable(host);
    for (const QString& host :
         {media, u"evil"_s + site, site + u".evil.example"_s, u"evil"_s + media, u"evil.example"_s, u"127.0.0.1"_s})
        EXPECT_FALSE(sent(host)) << qPrintable(host);
    EXPECT_FALSE(request.credentialFor(QUrl()).has_value());
}

TEST_F(CredentialHop, atTheRealServicesNothingGoesOutInTheClear)
{
    const Endpoints endpoints = Endpoints::production();
    const Engine real(client, clock, endpoints);
    HttpRequest request;
    real.authorize(request, u"abc"_s);
    QList<QUrl> addresses = endpoints.workspaceLists;
    addresses << endpoints.feed << endpoints.cdn << endpoints.sunoHome;
    for (QUrl& address : addresses) {
        EXPECT_TRUE(request.credentialFor(address).has_value()) << qPrintable(address.toString());
        address.setScheme(u"http"_s);
        EXPECT_FALSE(request.credentialFor(address).has_value()) << qPrintable(address.toString());
        address.setPort(443);
        EXPECT_FALSE(request.credentialFor(address).has_value()) << qPrintable(address.toString());
    }
}

/// A service in the clear on this machine, under rules that are not the stand-in's.
class CredentialInTheClear : public CredentialHop
{
protected:
    /// Reads a page that is reached by a redirect, the list of projects and an asset; gives every credential that the
    /// service was sent.
    QList<QByteArray> credentialsUnder(const QList<CredentialDomain>& rules)
    {
        const Endpoints endpoints{.feed = server.url(u"/api/feed/v2"_s),
                                  .workspaceLists = {server.url(u"/api/project/me"_s)},
                                  .cdn = server.url(QString()),
                                  .credentialDomains = rules};
        Engine reader(client, clock, endpoints);
        reader.pagePauseMs = 0;
        reader.tokenProvider = [] { return u"token"_s; };
        server.play(redirectTo(server.url(u"/again"_s)));
        server.play(feedPage({}));
        server.play(json(R"({"projects": [{"id": "0123456789abcdef0123456789abcdef", "name": "Album"}]})"));
        server.play({send(answer("200 OK", {}, "sound"))});
        EXPECT_FALSE(QCoro::waitFor(outcomeOf(reader.fetchAllClips({}, u"token"_s))).error);
        EXPECT_EQ(QCoro::waitFor(reader.fetchWorkspaces(u"token"_s)).size(), 1);
        EXPECT_EQ(QCoro::waitFor(reader.downloadFile(server.url(u"/a.mp3"_s).toString(), target(), u"token"_s)),
                  DownloadOutcome::downloaded());
        return credentials(server);
    }
};

TEST_F(CredentialInTheClear, theRealRulesGiveNoneToThisMachine)
{
    EXPECT_THAT(credentialsUnder(Endpoints::production().credentialDomains),
                ElementsAre("none", "none", "none", "none"));
    for (const QByteArray& head : server.requests())
        EXPECT_FALSE(head.contains("token")) << head.constData();
}

TEST_F(CredentialInTheClear, thisMachineGetsNoneWhereARuleDoesNotSayThatItWillDo)
{
    EXPECT_THAT(credentialsUnder({{.domain = u"127.0.0.1"_s}}), ElementsAre("none", "none", "none", "none"));
}

TEST_F(CredentialInTheClear, onlyARuleThatSaysSoGivesIt)
{
    EXPECT_THAT(credentialsUnder({{.domain = u"127.0.0.1"_s, .unencrypted = true}}),
                testing::Each(QByteArray("Bearer token")));
}

} // namespace
} // namespace orvane::test
