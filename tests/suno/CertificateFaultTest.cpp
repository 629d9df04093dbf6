#include "suno/SaveClip.h"
#include "tests/platform/network/TlsServer.h"
#include "tests/suno/ReadOutcome.h"
#include "tests/support/ScriptedServer.h"
#include "tests/support/TestClock.h"
#include "tests/support/TestFolder.h"

#include <gmock/gmock.h>
#include <memory>

/// The engine before a service that cannot show who it is, or that leads out of the encrypted connection.

namespace orvane::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using testing::HasSubstr;

const QString canary = u"canary-5f3759df"_s;

class CertificateFault : public testing::Test
{
protected:
    /// Made once, and before there is a second thread: the tool is a process of its own.
    struct Papers
    {
        Authority authority;
        Identity good = authority.issue("IP:127.0.0.1");
        Identity selfSigned = authority.selfSigned("IP:127.0.0.1");
        Identity otherName = authority.issue("IP:127.0.0.2,DNS:localhost");
        Identity expired = authority.issue("IP:127.0.0.1", -1);
    };

    static void SetUpTestSuite() { papers_ = std::make_unique<Papers>(); }

    static void TearDownTestSuite() { papers_.reset(); }

    static Endpoints endpointsOf(const TlsServer& server)
    {
        Endpoints endpoints;
        endpoints.feed = server.url(u"/api/feed/v2"_s);
        endpoints.cdn = server.url(QString());
        endpoints.credentialDomains = {{.domain = u"127.0.0.1"_s}};
        return endpoints;
    }

    void listenTo(Engine& engine)
    {
        engine.onLog = [this](const QString& message, LogLevel) { log_.append(message); };
    }

    void expectThePageToFail(Engine& engine, const std::string& words)
    {
        const ReadOutcome outcome = QCoro::waitFor(outcomeOf(engine.fetchAllClips({}, canary)));
        ASSERT_TRUE(outcome.error);
        EXPECT_THAT(outcome.error->sentence().toStdString(), HasSubstr(words));
        EXPECT_FALSE(outcome.error->sentence().contains(canary));
    }

    void expectTheAssetToFail(Engine& engine, const std::string& words)
    {
        const Clip clip{.id = u"a"_s, .title = u"T"_s};
        const ClipResult result =
            QCoro::waitFor(saveClip(engine, clip, {{Asset::audio}, folder_.path(), canary}, u"001 - T"_s, u"T"_s));
        EXPECT_EQ(result.problems, 1);
        EXPECT_TRUE(log_.last().startsWith(u"MP3 failed for T: "_s)) << qPrintable(log_.last());
        EXPECT_THAT(log_.last().toStdString(), HasSubstr(words));
        EXPECT_EQ(folder_.names(), QStringList());
    }

    void expectRefusal(const Identity& identity, const std::string& words)
    {
        const Trust trust(papers_->authority.certificate());
        const TlsServer server(identity, answer("200 OK", "", R"({"clips": []})"));
        Engine engine(client_, clock_, endpointsOf(server));
        listenTo(engine);
        expectThePageToFail(engine, words);
        expectTheAssetToFail(engine, words);
        EXPECT_EQ(server.received(), QByteArray()) << "not one byte of a request was sent";
        EXPECT_FALSE(log_.join(u'\n').contains(canary));
    }

    static inline std::unique_ptr<Papers> papers_;
    HttpClient client_;
    TestClock clock_;
    TestFolder folder_;
    QStringList log_;
};

TEST_F(CertificateFault, oneThatSignsItselfGetsNoRequest)
{
    expectRefusal(papers_->selfSigned, "self-signed");
}

TEST_F(CertificateFault, oneForAnotherNameGetsNoRequest)
{
    expectRefusal(papers_->otherName, "did not match");
}

TEST_F(CertificateFault, anExpiredOneGetsNoRequest)
{
    expectRefusal(papers_->expired, "expired");
}

TEST_F(CertificateFault, aRedirectToTheUnencryptedWebIsNotFollowed)
{
    ScriptedServer plain;
    plain.play({send(answer("200 OK", "", R"({"clips": []})"))});
    const Trust trust(papers_->authority.certificate());
    const TlsServer server(papers_->good, answer("302 Found", "Location: " + plain.url().toEncoded() + "\r\n", ""));
    Engine engine(client_, clock_, endpointsOf(server));
    listenTo(engine);
    expectThePageToFail(engine, "refused a redirect from https to http");
    expectTheAssetToFail(engine, "refused a redirect from https to http");
    EXPECT_EQ(plain.connections(), 0);
    EXPECT_TRUE(server.received().contains("Bearer " + canary.toLatin1())) << "the service itself is trusted";
}

} // namespace
} // namespace orvane::test
