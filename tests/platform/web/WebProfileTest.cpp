#include "platform/web/WebProfile.h"

#include "platform/web/WebPage.h"
#include "tests/platform/web/PageServer.h"

#include <QDirIterator>
#include <QNetworkCookie>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QWebEngineCookieStore>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <qcoro/qcorotask.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvane {
namespace {

using test::call;

const QString site = u"site.localhost"_s;
const QString below = u"login.site.localhost"_s;
const QString other = u"other.localhost"_s;

bool belongsToSite(const QString& host)
{
    return host == site || host.endsWith(u'.' + site);
}

const QString storing = uR"(localStorage.setItem('key', 'kept');
sessionStorage.setItem('key', 'kept');
await new Promise(done => {
    const request = indexedDB.open('base');
    request.onsuccess = () => { request.result.close(); done(); };
});
const cache = await caches.open('cache');
await cache.put('/kept', new Response('kept'));
await navigator.serviceWorker.register('/worker.js');
return 'stored';)"_s;

const QString looking = uR"(return [localStorage.getItem('key'), sessionStorage.getItem('key'),
    (await indexedDB.databases()).length, (await caches.keys()).length,
    (await navigator.serviceWorker.getRegistrations()).length].join();)"_s;

class WebProfileTest : public testing::Test
{
protected:
    WebProfileTest()
    {
        folder.setAutoRemove(false);
        server.serve("/", "<title>page</title>");
        server.serve("/worker.js", test::Page{.body = "", .contentType = "text/javascript"});
    }

    /// Loads a page of the host that sets a cookie with these attributes.
    void takeCookie(WebPage& page, const QString& host, const QByteArray& cookie)
    {
        server.serve("/cookie", test::Page{.body = "set", .headers = "Set-Cookie: " + cookie + "\r\n"});
        ASSERT_TRUE(test::load(page, server.url(u"/cookie"_s, host)));
    }

    /// The cookies that a request to the host carries.
    QByteArray cookiesFor(WebPage& page, const QString& host, const QString& path = u"/"_s)
    {
        server.serve(path.toUtf8(), "<title>asked</title>");
        EXPECT_TRUE(test::load(page, server.url(path, host)));
        return server.cookiesSentTo(path.toUtf8());
    }

    /// An earlier launch of the program: a process of its own, that takes a cookie of a host and stores data.
    void launchBefore(const QByteArray& cookie, const QString& host = site)
    {
        server.serve("/cookie", test::Page{.body = "set", .headers = "Set-Cookie: " + cookie + "\r\n"});
        QProcess launch;
        launch.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        launch.start(QStringLiteral(ORVANE_EARLIER_LAUNCH),
                     {folder.path(), server.url(u"/cookie"_s, host).toString(), storing});
        ASSERT_TRUE(test::eventually([&] { return launch.state() == QProcess::NotRunning; }));
        ASSERT_EQ(launch.exitCode(), 0);
    }

    static void forget(WebProfile& profile) { QCoro::waitFor(profile.deleteSiteData(belongsToSite)); }

    test::PageServer server;
    /// In the program's home: the engine's threads may still write there when a test is over.
    QTemporaryDir folder{QDir::homePath() + u"/profile-XXXXXX"_s};
};

} // namespace

TEST_F(WebProfileTest, aSessionCookieAndStoredDataSurviveARestart)
{
    launchBefore("session=one; HttpOnly");
    WebProfile profile(folder.path());
    WebPage page(profile);
    EXPECT_EQ(cookiesFor(page, site), "session=one");
    EXPECT_EQ(call(page, u"return localStorage.getItem('key');"_s).text(), u"kept"_s);
}

TEST_F(WebProfileTest, aProfileInMemoryForgets)
{
    {
        WebProfile profile{QString()};
        WebPage page(profile);
        takeCookie(page, site, "session=one");
        EXPECT_TRUE(profile.engineProfile().isOffTheRecord());
    }
    WebProfile profile{QString()};
    WebPage page(profile);
    EXPECT_EQ(cookiesFor(page, site), "");
}

TEST_F(WebProfileTest, nothingIsKeptOutsideItsFolder)
{
    const auto files = [this] {
        QStringList found;
        for (QDirIterator each(QDir::homePath(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
             each.hasNext();) {
            if (const QString file = each.next(); !file.startsWith(folder.path()))
                found.append(file);
        }
        return found.filter(QRegularExpression(u"QtWebEngine|Cookies|IndexedDB"_s));
    };
    const QStringList before = files();
    {
        WebProfile profile(folder.path());
        EXPECT_EQ(profile.engineProfile().cachePath(), folder.filePath(u"cache"_s));
        WebPage page(profile);
        takeCookie(page, site, "session=one");
        call(page, storing);
    }
    EXPECT_EQ(files(), before);
    EXPECT_FALSE(QDir(folder.path()).isEmpty());
}

TEST_F(WebProfileTest, refusesWhatNoPaneNeeds)
{
    WebProfile profile{QString()};
    const QWebEngineSettings& settings = *profile.engineProfile().settings();
    EXPECT_FALSE(settings.testAttribute(QWebEngineSettings::LocalContentCanAccessFileUrls));
    EXPECT_FALSE(settings.testAttribute(QWebEngineSettings::JavascriptCanOpenWindows));
    EXPECT_FALSE(settings.testAttribute(QWebEngineSettings::FullScreenSupportEnabled));
    EXPECT_FALSE(profile.engineProfile().isSpellCheckEnabled());
}

TEST_F(WebProfileTest, everyCookieOfASiteGoesAndNoOther)
{
    WebProfile profile{QString()};
    WebPage page(profile);
    takeCookie(page, site, "plain=1");
    takeCookie(page, site, "hidden=1; HttpOnly; Max-Age=1000");
    takeCookie(page, site, "deep=1; Path=/deep/er");
    takeCookie(page, site, "wide=1; Domain=site.localhost");
    takeCookie(page, below, "below=1; HttpOnly");
    takeCookie(page, other, "other=1");
    ASSERT_EQ(cookiesFor(page, site, u"/deep/er/x"_s).count('='), 4);

    forget(profile);
    EXPECT_EQ(cookiesFor(page, site, u"/deep/er/x"_s), "");
    EXPECT_EQ(cookiesFor(page, below), "");
    EXPECT_EQ(cookiesFor(page, other), "other=1");
}

TEST_F(WebProfileTest, secureCookiesGoToo)
{
    WebProfile profile{QString()};
    WebPage page(profile);
    ASSERT_TRUE(test::load(page, server.url(u"/"_s, other)));
    QWebEngineCookieStore& store = *profile.engineProfile().cookieStore();
    QSignalSpy added(&store, &QWebEngineCookieStore::cookieAdded);
    QNetworkCookie secure("secure", "1");
    secure.setSecure(true);
    secure.setHttpOnly(true);
    store.setCookie(secure, QUrl(u"https://site.localhost/"_s));
    secure.setDomain(u".site.localhost"_s);
    store.setCookie(secure, QUrl(u"https://site.localhost/"_s));
    ASSERT_TRUE(test::eventually([&] { return added.size() == 2; }));

    QSignalSpy removed(&store, &QWebEngineCookieStore::cookieRemoved);
    forget(profile);
    EXPECT_EQ(std::count_if(removed.begin(), removed.end(),
                            [](const QList<QVariant>& event) {
                                return event.first().value<QNetworkCookie>().name() == "secure";
                            }),
              2);
}

TEST_F(WebProfileTest, whatASiteStoredGoesAndNoOther)
{
    WebProfile profile(folder.path());
    WebPage page(profile);
    for (const QString& host : {other, below, site}) {
        ASSERT_TRUE(test::load(page, server.url(u"/"_s, host)));
        ASSERT_EQ(call(page, storing).text(), u"stored"_s);
        ASSERT_EQ(call(page, looking).text(), u"kept,kept,1,1,1"_s);
    }

    forget(profile);
    EXPECT_EQ(page.url(), QUrl(u"about:blank"_s));
    ASSERT_TRUE(test::load(page, server.url(u"/"_s, site)));
    EXPECT_EQ(call(page, looking).text(), u",,0,0,0"_s);
    // No page showed this host any more: all but its service worker is gone.
    ASSERT_TRUE(test::load(page, server.url(u"/"_s, below)));
    EXPECT_TRUE(call(page, looking).text().value_or(QString()).startsWith(u",kept,0,0,"_s))
        << call(page, looking).text().value_or(QString()).toStdString();
    ASSERT_TRUE(test::load(page, server.url(u"/"_s, other)));
    EXPECT_EQ(call(page, looking).text(), u"kept,kept,1,1,1"_s);
}

TEST_F(WebProfileTest, whatAnEarlierLaunchTookGoesToo)
{
    launchBefore("session=one; HttpOnly; Path=/deep");
    WebProfile profile(folder.path());
    forget(profile);
    WebPage page(profile);
    EXPECT_EQ(cookiesFor(page, site, u"/deep"_s), "");
    EXPECT_TRUE(call(page, looking).text().value_or(QString()).startsWith(u",,0,0,"_s))
        << call(page, looking).text().value_or(QString()).toStdString();
}

TEST_F(WebProfileTest, whatAnEarlierLaunchTookOfAnotherSiteStays)
{
    launchBefore("session=one; Path=/deep");
    launchBefore("other=1", other);
    WebProfile profile(folder.path());
    WebPage page(profile);
    forget(profile);
    EXPECT_EQ(cookiesFor(page, site, u"/deep"_s), "");
    EXPECT_EQ(cookiesFor(page, other), "other=1");
}

TEST_F(WebProfileTest, whereTheRecordOfCookiesIsLostEveryCookieGoes)
{
    launchBefore("session=one; HttpOnly; Path=/deep");
    ASSERT_TRUE(QFile::remove(folder.filePath(u"cookies.json"_s)));
    WebProfile profile(folder.path());
    WebPage page(profile);
    takeCookie(page, other, "other=1");
    forget(profile);
    EXPECT_EQ(cookiesFor(page, site, u"/deep"_s), "");
    EXPECT_EQ(cookiesFor(page, other), "");
}

TEST_F(WebProfileTest, theRecordOfCookiesHoldsNoValue)
{
    launchBefore("session=canary-token");
    QFile record(folder.filePath(u"cookies.json"_s));
    ASSERT_TRUE(record.open(QIODevice::ReadOnly));
    const QByteArray bytes = record.readAll();
    EXPECT_EQ(bytes, "[[\"session\",\"site.localhost\",\"/\"]]");
    EXPECT_EQ(record.permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}

TEST_F(WebProfileTest, aPageOfAnotherSiteIsLeftWhereItIs)
{
    WebProfile profile{QString()};
    WebPage page(profile);
    ASSERT_TRUE(test::load(page, server.url(u"/"_s, other)));
    forget(profile);
    EXPECT_EQ(page.url(), server.url(u"/"_s, other));
}

} // namespace orvane
