#include "platform/web/SiteData.h"

#include "platform/web/ScriptSource.h"

#include <QDateTime>
#include <QDir>
#include <QNetworkCookie>
#include <QPromise>
#include <QRegularExpression>
#include <QTimer>
#include <QWebEngineCookieStore>
#include <QWebEngineProfile>
#include <qcoro/qcorofuture.h>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace orvane {
namespace {

constexpr int mostRounds = 5;
constexpr std::chrono::milliseconds longestListing = 3s;

/// One complete listing of a profile's cookies.
///
/// The engine hands them out one by one and does not say which is the last. So a cookie of our own is laid among them:
/// its first coming says that it is stored, its second that the listing, which comes in one go, is under way.
class CookieListing : public QObject
{
public:
    explicit CookieListing(QWebEngineCookieStore& store)
        : store_(store)
        , name_(ScriptSource::freshName().toLatin1())
    {
        connect(&store, &QWebEngineCookieStore::cookieAdded, this,
                [this](const QNetworkCookie& cookie) { take(cookie); });
        QTimer::singleShot(longestListing, this, [this] { end(); });
    }

    QFuture<QList<QNetworkCookie>> start()
    {
        promise_.start();
        QNetworkCookie mark(name_, "listing");
        mark.setExpirationDate(QDateTime::currentDateTimeUtc().addSecs(60));
        store_.setCookie(mark, QUrl(u"https://listing.invalid/"_s));
        return promise_.future();
    }

private:
    void take(const QNetworkCookie& cookie)
    {
        if (cookie.name() != name_) {
            cookies_.append(cookie);
            return;
        }
        if (!std::exchange(stored_, true))
            store_.loadAllCookies();
        else
            QTimer::singleShot(0, this, [this, cookie] {
                store_.deleteCookie(cookie);
                end();
            });
    }

    void end()
    {
        if (std::exchange(ended_, true))
            return;
        promise_.addResult(cookies_);
        promise_.finish();
    }

    QWebEngineCookieStore& store_;
    QByteArray name_;
    QPromise<QList<QNetworkCookie>> promise_;
    QList<QNetworkCookie> cookies_;
    bool stored_ = false;
    bool ended_ = false;
};

QString hostOf(const QNetworkCookie& cookie)
{
    const QString domain = cookie.domain();
    return domain.startsWith(u'.') ? domain.sliced(1) : domain;
}

} // namespace

std::optional<QUrl> SiteData::originOf(const QUrl& address)
{
    if (address.host().isEmpty() || (address.scheme() != u"http" && address.scheme() != u"https"))
        return std::nullopt;
    return address.adjusted(QUrl::RemoveUserInfo | QUrl::RemovePath | QUrl::RemoveQuery | QUrl::RemoveFragment);
}

QSet<QUrl> SiteData::originsOfHosts(const QSet<QString>& hosts)
{
    QSet<QUrl> origins;
    for (const QString& host : hosts) {
        QUrl origin;
        origin.setScheme(u"https"_s);
        origin.setHost(host);
        origins.insert(origin);
    }
    return origins;
}

QSet<QUrl> SiteData::originsWithDatabase(const QString& storagePath)
{
    static const QRegularExpression folderName(u"^(https?)_(.+)_([0-9]+)\\.indexeddb\\.leveldb$"_s);
    QSet<QUrl> origins;
    if (storagePath.isEmpty())
        return origins;
    const QStringList folders = QDir(storagePath + u"/IndexedDB"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& folder : folders) {
        const QRegularExpressionMatch match = folderName.match(folder);
        if (!match.hasMatch())
            continue;
        QUrl origin;
        origin.setScheme(match.captured(1));
        origin.setHost(match.captured(2));
        if (const int port = match.captured(3).toInt(); port != 0)
            origin.setPort(port);
        origins.insert(origin);
    }
    return origins;
}

QCoro::Task<QSet<QString>> SiteData::deleteCookies(QWebEngineProfile& profile, HostTest belongs)
{
    QWebEngineCookieStore& store = *profile.cookieStore();
    QSet<QString> hosts;
    for (int round = 0; round < mostRounds; ++round) {
        CookieListing listing(store);
        const QFuture<QList<QNetworkCookie>> future = listing.start();
        const QList<QNetworkCookie> cookies = co_await future;
        bool found = false;
        for (const QNetworkCookie& cookie : cookies) {
            const QString host = hostOf(cookie);
            if (!belongs(host))
                continue;
            found = true;
            hosts.insert(host);
            store.deleteCookie(cookie);
        }
        if (!found)
            break;
    }
    co_return hosts;
}

QString SiteData::clearingScript()
{
    return uR"(const tries = [
    async () => localStorage.clear(),
    async () => sessionStorage.clear(),
    async () => {
        for (const { name } of await indexedDB.databases()) {
            await new Promise(done => {
                const request = indexedDB.deleteDatabase(name);
                request.onsuccess = request.onerror = request.onblocked = done;
            });
        }
    },
    async () => {
        for (const key of await caches.keys()) {
            await caches.delete(key);
        }
    },
    async () => {
        for (const registration of await navigator.serviceWorker.getRegistrations()) {
            await registration.unregister();
        }
    },
];
let cleared = 0;
for (const attempt of tries) {
    try {
        await attempt();
        cleared += 1;
    } catch (error) {
    }
}
return cleared;)"_s;
}

} // namespace orvane
