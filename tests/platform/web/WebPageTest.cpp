#include "platform/web/WebPage.h"

#include "platform/web/WebProfile.h"
#include "tests/platform/web/PageServer.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QSslConfiguration>
#include <QSslKey>
#include <QTemporaryDir>
#include <QWebEngineDownloadRequest>
#include <QWebEngineLoadingInfo>
#include <QWebEnginePage>
#include <QWebEngineProfile>

#include <gtest/gtest.h>
#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace orvane {
namespace {

using test::call;
using test::eventually;

class WebPageTest : public testing::Test
{
protected:
    WebPageTest()
    {
        server.serve("/first", "<title>first</title>first");
        server.serve("/second", "<title>second</title>second");
        server.serve("/silent", test::Page{.body = {}, .silent = true});
    }

    QUrl at(const QString& path, const QString& host = u"127.0.0.1"_s) const { return server.url(path, host); }

    test::PageServer server;
    WebProfile profile{QString()};
    WebPage page{profile};
    QSignalSpy committed{&page, &WebPage::committed};
    QSignalSpy finished{&page, &WebPage::finished};
    QSignalSpy failed{&page, &WebPage::failed};

    LoadFailure failure() const
    {
        return failed.isEmpty() ? LoadFailure{} : failed.last().first().value<LoadFailure>();
    }
};

/// A server certificate that nobody vouches for, made for this run.
QSslConfiguration selfSigned(const QTemporaryDir& folder)
{
    const QString key = folder.filePath(u"key.pem"_s);
    const QString certificate = folder.filePath(u"certificate.pem"_s);
    const int status = QProcess::execute(u"openssl"_s, {u"req"_s, u"-x509"_s, u"-newkey"_s, u"rsa:2048"_s, u"-nodes"_s,
                                                        u"-days"_s, u"2"_s, u"-subj"_s, u"/CN=localhost"_s,
                                                        u"-addext"_s, u"subjectAltName=DNS:localhost"_s, u"-keyout"_s,
                                                        key, u"-out"_s, certificate, u"-batch"_s});
    EXPECT_EQ(status, 0);
    QFile keyFile(key);
    QFile certificateFile(certificate);
    EXPECT_TRUE(keyFile.open(QIODevice::ReadOnly) && certificateFile.open(QIODevice::ReadOnly));
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setPrivateKey(QSslKey(&keyFile, QSsl::Rsa));
    configuration.setLocalCertificate(QSslCertificate(&certificateFile));
    return configuration;
}

} // namespace

TEST_F(WebPageTest, aLoadIsCommittedWithItsFinalAddressAndThenFinishes)
{
    server.serve("/away", test::Page{.body = {}, .status = 302, .headers = "Location: /first\r\n"});
    bool committedFirst = false;
    QObject::connect(&page, &WebPage::finished, &page, [&] { committedFirst = !committed.isEmpty(); });
    EXPECT_TRUE(page.url().isEmpty());
    ASSERT_TRUE(test::load(page, at(u"/away"_s)));
    EXPECT_TRUE(committedFirst);
    ASSERT_EQ(committed.size(), 1);
    EXPECT_EQ(committed.first().first().toUrl(), at(u"/first"_s));
    EXPECT_EQ(page.url(), at(u"/first"_s));
    EXPECT_EQ(finished.size(), 1);
    EXPECT_TRUE(failed.isEmpty());
}

TEST_F(WebPageTest, theAddressStaysUntilTheNextDocumentComes)
{
    ASSERT_TRUE(test::load(page, at(u"/first"_s)));
    page.load(at(u"/silent"_s));
    ASSERT_TRUE(eventually([&] { return !server.cookiesSentTo("/silent").isNull() || server.requests().size() >= 2; }));
    EXPECT_EQ(page.url(), at(u"/first"_s));
    page.stop();
    ASSERT_TRUE(eventually([&] { return !failed.isEmpty(); }));
    EXPECT_TRUE(failure().cancelled);
    EXPECT_EQ(committed.size(), 1);
    EXPECT_EQ(page.url(), at(u"/first"_s));
}

TEST_F(WebPageTest, anAddressThatChangesInPlaceIsCommittedToo)
{
    ASSERT_TRUE(test::load(page, at(u"/first"_s)));
    call(page, u"history.pushState({}, '', '/pushed');"_s);
    ASSERT_TRUE(eventually([&] { return committed.size() == 2; }));
    EXPECT_EQ(page.url(), at(u"/pushed"_s));
    EXPECT_EQ(finished.size(), 1);
}

TEST_F(WebPageTest, anErrorStatusWithADocumentOfItsOwnFinishes)
{
    server.serve("/missing", test::Page{.body = "<p>nothing here</p>", .status = 404});
    EXPECT_TRUE(test::load(page, at(u"/missing"_s)));
    server.serve("/broken", test::Page{.body = "<p>broken</p>", .status = 500});
    EXPECT_TRUE(test::load(page, at(u"/broken"_s)));
    EXPECT_TRUE(failed.isEmpty());
}

TEST_F(WebPageTest, aServerThatIsNotThereFails)
{
    EXPECT_FALSE(test::load(page, QUrl(u"http://127.0.0.1:1/"_s)));
    EXPECT_EQ(failed.size(), 1);
    EXPECT_FALSE(failure().cancelled);
    EXPECT_FALSE(failure().text.isEmpty());
}

TEST_F(WebPageTest, aLoadThatTakesTooLongIsStoppedAndHasFailed)
{
    page.load(at(u"/silent"_s), 50ms);
    ASSERT_TRUE(eventually([&] { return !failed.isEmpty(); }));
    EXPECT_FALSE(failure().cancelled);
    EXPECT_EQ(failure().text, u"The page did not answer in time."_s);
    ASSERT_TRUE(eventually([&] { return !page.enginePage().isLoading(); }));
    ASSERT_TRUE(test::load(page, at(u"/first"_s)));
    EXPECT_EQ(failed.size(), 1);
}

TEST_F(WebPageTest, theEndOfThePageBeforeIsNotTakenForItsOwn)
{
    std::optional<QWebEngineLoadingInfo> end;
    QObject::connect(&page.enginePage(), &QWebEnginePage::loadingChanged, &page,
                     [&end](const QWebEngineLoadingInfo& info) { end = info; });
    ASSERT_TRUE(test::load(page, at(u"/first"_s)));
    ASSERT_EQ(end->status(), QWebEngineLoadingInfo::LoadSucceededStatus);
    // A busy engine tells it late.
    page.load(at(u"/second"_s));
    Q_EMIT page.enginePage().loadingChanged(*end);
    EXPECT_EQ(finished.count(), 1);
    EXPECT_TRUE(eventually([this] { return finished.count() == 2; }));
    EXPECT_EQ(page.url(), at(u"/second"_s));
}

TEST_F(WebPageTest, aLoadThatFinishedInTimeIsLeftAlone)
{
    page.load(at(u"/first"_s), 2s);
    ASSERT_TRUE(eventually([&] { return !finished.isEmpty(); }));
    QTimer* limit = page.findChild<QTimer*>();
    EXPECT_TRUE(!limit || !limit->isActive());
    EXPECT_TRUE(failed.isEmpty());
}

TEST_F(WebPageTest, zoomHoldsOverEveryNavigation)
{
    page.setZoom(0.8);
    for (const QString& host : {u"127.0.0.1"_s, u"localhost"_s, u"a.localhost"_s, u"127.0.0.1"_s}) {
        ASSERT_TRUE(test::load(page, at(u"/first"_s, host)));
        EXPECT_TRUE(eventually([&] { return std::abs(page.enginePage().zoomFactor() - 0.8) < 1e-6; }))
            << page.enginePage().zoomFactor();
        EXPECT_DOUBLE_EQ(page.zoom(), 0.8);
    }
}

TEST_F(WebPageTest, zoomKeepsToWhatTheEngineCan)
{
    page.setZoom(100);
    EXPECT_DOUBLE_EQ(page.zoom(), 5);
    page.setZoom(-1);
    EXPECT_DOUBLE_EQ(page.zoom(), 0.25);
}

TEST_F(WebPageTest, aUserScriptRunsBeforeThePagesOwn)
{
    server.serve("/reading", "<script>window.seen = window.given;</script><iframe src='/first'></iframe>");
    page.addUserScript(u"window.given = 'early';"_s, ScriptWorld::page, InjectionPoint::documentCreation);
    page.addUserScript(u"window.body = document.body ? 'whole' : 'none';"_s, ScriptWorld::page,
                       InjectionPoint::documentReady);
    page.addUserScript(u"window.hidden = 'apart';"_s, ScriptWorld::application, InjectionPoint::documentCreation);
    ASSERT_TRUE(test::load(page, at(u"/reading"_s)));
    EXPECT_EQ(call(page, u"return window.seen + window.body + window.hidden + frames[0].given;"_s).text(),
              u"earlywholeundefinedundefined"_s);
}

TEST_F(WebPageTest, aPolicyDecidesWhereAPageGoes)
{
    ASSERT_TRUE(test::load(page, at(u"/first"_s)));
    QList<Navigation> asked;
    page.navigationPolicy = [&](const Navigation& navigation) {
        asked.append(navigation);
        return navigation.url.path() != u"/second";
    };
    page.run(u"location.href = '/second';"_s);
    ASSERT_TRUE(eventually([&] { return asked.size() == 1; }));
    EXPECT_EQ(asked.first().url, at(u"/second"_s));
    EXPECT_TRUE(asked.first().isMainFrame);
    page.run(u"document.body.append(Object.assign(document.createElement('iframe'), {src: '/first'}));"_s);
    ASSERT_TRUE(eventually([&] { return asked.size() == 2; }));
    EXPECT_FALSE(asked.last().isMainFrame);
    EXPECT_EQ(page.url(), at(u"/first"_s));
}

TEST_F(WebPageTest, aDownloadIsDroppedUnlessItIsAccepted)
{
    const test::Page file{.body = "bytes",
                          .contentType = "application/octet-stream",
                          .headers = "Content-Disposition: attachment; filename=a.bin\r\n"};
    server.serve("/file", file);
    const QTemporaryDir folder;
    profile.engineProfile().setDownloadPath(folder.path());
    ASSERT_TRUE(test::load(page, at(u"/first"_s)));
    const auto download = [&] { page.run(u"location.href = '/file';"_s); };
    QList<QWebEngineDownloadRequest::DownloadState> states;
    QObject::connect(&profile.engineProfile(), &QWebEngineProfile::downloadRequested, &page,
                     [&](QWebEngineDownloadRequest* request) {
                         QObject::connect(request, &QWebEngineDownloadRequest::stateChanged, &page,
                                          [&](auto state) { states.append(state); });
                     });
    const auto ended = [&] {
        return !states.isEmpty() && states.last() >= QWebEngineDownloadRequest::DownloadCompleted;
    };

    download();
    ASSERT_TRUE(eventually(ended));
    EXPECT_EQ(states.last(), QWebEngineDownloadRequest::DownloadCancelled);
    EXPECT_TRUE(QDir(folder.path()).isEmpty());

    states.clear();
    page.downloadHandler = [](QWebEngineDownloadRequest& request) { request.accept(); };
    download();
    ASSERT_TRUE(eventually(ended));
    EXPECT_EQ(states.last(), QWebEngineDownloadRequest::DownloadCompleted);
    EXPECT_TRUE(QFile::exists(folder.filePath(u"a.bin"_s)));
}

TEST_F(WebPageTest, aDownloadOfAnotherPageIsNotOurs)
{
    server.serve("/file", test::Page{.body = "bytes", .contentType = "application/octet-stream"});
    WebPage other(profile);
    int ours = 0;
    int others = 0;
    page.downloadHandler = [&](QWebEngineDownloadRequest&) { ++ours; };
    other.downloadHandler = [&](QWebEngineDownloadRequest&) { ++others; };
    other.load(at(u"/file"_s));
    ASSERT_TRUE(eventually([&] { return others == 1; }));
    EXPECT_EQ(ours, 0);
}

TEST_F(WebPageTest, alertsAndQuestionsAreAnsweredByHandlers)
{
    ASSERT_TRUE(test::load(page, at(u"/first"_s)));
    QStringList said;
    page.alertHandler = [&](const QString& message) { said.append(message); };
    page.confirmHandler = [&](const QString& message) { return message == u"yes?"; };
    EXPECT_EQ(call(page, u"alert('boo'); return [confirm('yes?'), confirm('no?')].join();"_s).text(), u"true,false"_s);
    EXPECT_EQ(said, QStringList(u"boo"_s));
}

TEST_F(WebPageTest, everyPermissionIsDenied)
{
    ASSERT_TRUE(test::load(page, at(u"/first"_s)));
    // A page that nobody sees is not answered about places.
    page.enginePage().setVisible(true);
    EXPECT_EQ(call(page, u"return await Notification.requestPermission();"_s).text(), u"denied"_s);
    EXPECT_EQ(call(page, u"return await new Promise(done => navigator.geolocation.getCurrentPosition("
                         "() => done('told'), error => done(error.code)));"_s)
                  .value,
              QJsonValue(1));
    EXPECT_EQ(call(page, u"return document.fullscreenEnabled;"_s).value, QJsonValue(false));
}

TEST_F(WebPageTest, aCertificateThatNobodyVouchesForIsRejected)
{
    const QTemporaryDir folder;
    test::PageServer secret(selfSigned(folder));
    secret.serve("/", "<title>secret</title>");
    QSignalSpy errors(&page.enginePage(), &QWebEnginePage::certificateError);
    EXPECT_FALSE(test::load(page, secret.url(u"/"_s, u"localhost"_s)));
    EXPECT_EQ(errors.size(), 1);
    EXPECT_TRUE(secret.requests().isEmpty());
    EXPECT_FALSE(failure().cancelled);
}

TEST_F(WebPageTest, whatAPageWritesOnItsConsoleStaysThere)
{
    ASSERT_TRUE(test::load(page, at(u"/first"_s)));
    testing::internal::CaptureStderr();
    call(page, u"console.log('canary-token'); console.error('canary-token'); return 1;"_s);
    call(page, u"return 1;"_s);
    EXPECT_EQ(testing::internal::GetCapturedStderr().find("canary-token"), std::string::npos);
}

TEST_F(WebPageTest, shownTextHasTheOriginOfItsAddressAndAsksNobody)
{
    page.show(u"<title>shown</title>"_s, at(u"/first"_s, u"localhost"_s));
    ASSERT_TRUE(eventually([&] { return finished.size() == 1; }));
    EXPECT_EQ(call(page, u"return location.host;"_s).text(), at({}, u"localhost"_s).authority());
    EXPECT_TRUE(server.requests().isEmpty());
}

} // namespace orvane
