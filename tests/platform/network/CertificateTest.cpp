#include "tests/platform/network/Fetch.h"
#include "tests/platform/network/TlsServer.h"
#include "tests/support/ScriptedServer.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace test;

class Certificate : public testing::Test
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

    /// Fetches with a credential from a server with this identity, which must see not one byte of it.
    void expectRefusal(const Identity& identity, const std::string& words)
    {
        TlsServer server(identity, answer("200 OK", "", "{}"));
        const QTemporaryDir folder;
        HttpRequest request = requestFor(server.url(u"/x?canary"_s));
        request.credentialFor = [](const QUrl&) {
            return HttpHeader{.name = "Authorization", .value = "Bearer canary"};
        };
        for (const Outcome& outcome : {fetch(client_, request), download(client_, request, folder.filePath(u"x"_s))}) {
            EXPECT_EQ(outcome.code(), HttpError::Code::Transport);
            EXPECT_THAT(outcome.sentence().toStdString(), testing::HasSubstr(words));
            EXPECT_THAT(outcome.sentence().toStdString(), testing::EndsWith(" (127.0.0.1)"));
        }
        EXPECT_TRUE(server.received().isEmpty());
        EXPECT_TRUE(QDir(folder.path()).isEmpty());
    }

    static inline std::unique_ptr<Papers> papers_;
    HttpClient client_;
};

TEST_F(Certificate, aGoodOneIsAccepted)
{
    const Trust trust(papers_->authority.certificate());
    const TlsServer server(papers_->good, answer("200 OK", "", "over TLS"));
    const Outcome outcome = fetch(client_, server.url());
    EXPECT_EQ(outcome.response.body, "over TLS") << outcome.sentence().toStdString();
}

TEST_F(Certificate, oneThatSignsItselfIsRefused)
{
    const Trust trust(papers_->authority.certificate());
    expectRefusal(papers_->selfSigned, "self-signed");
}

TEST_F(Certificate, oneForAnotherNameIsRefused)
{
    const Trust trust(papers_->authority.certificate());
    expectRefusal(papers_->otherName, "did not match");
}

TEST_F(Certificate, anExpiredOneIsRefused)
{
    const Trust trust(papers_->authority.certificate());
    expectRefusal(papers_->expired, "expired");
}

TEST_F(Certificate, oneOfAnUnknownAuthorityIsRefused)
{
    expectRefusal(papers_->good, "issuer certificate");
}

TEST_F(Certificate, aLargeBodyArrivesByteForByteOverTls)
{
    QByteArray body;
    for (int number = 0; body.size() < 8'000'000; ++number)
        body += QByteArray::number(number * 7919LL);
    const Trust trust(papers_->authority.certificate());
    const TlsServer server(papers_->good, answer("200 OK", "", body));
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"x"_s);
    EXPECT_EQ(download(client_, requestFor(server.url()), path).response.size, body.size());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll() == body);
}

TEST_F(Certificate, aCutOverTlsIsNoticed)
{
    const Trust trust(papers_->authority.certificate());
    const TlsServer server(papers_->good, answerUnmeasured("200 OK", "Content-Length: 9\r\n", "cut"));
    EXPECT_EQ(fetch(client_, server.url()).sentence(), u"truncated transfer (3 of 9 bytes)");
}

TEST_F(Certificate, aRedirectFromHttpsToHttpIsRefused)
{
    ScriptedServer plain;
    plain.play({send(answer("200 OK", "", "plain"))});
    const Trust trust(papers_->authority.certificate());
    const TlsServer server(papers_->good, answer("302 Found", "Location: " + plain.url().toEncoded() + "\r\n", ""));
    EXPECT_EQ(fetch(client_, server.url()).code(), HttpError::Code::RefusedRedirect);
    EXPECT_EQ(plain.connections(), 0);
}

TEST_F(Certificate, aHandshakeThatIsNotAnsweredTimesOut)
{
    ScriptedServer plain;
    plain.play({send(answer("200 OK", "", "plain"))});
    QUrl secure = plain.url();
    secure.setScheme(u"https"_s);
    HttpRequest request = requestFor(secure);
    request.timeout = std::chrono::milliseconds(150);
    EXPECT_EQ(fetch(client_, request).code(), HttpError::Code::TimedOut);
    EXPECT_TRUE(plain.requests().isEmpty());
}

} // namespace
} // namespace orvane
