#include "platform/web/WebProfile.h"

#include "platform/web/CookieRecord.h"
#include "platform/web/WebPage.h"

#include <QDir>
#include <QPointer>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <qcoro/qcorosignal.h>

#include <cassert>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace orvane {
namespace {

/// The profile's name inside the engine; its place on disk is set apart from it.
QWebEngineProfile* makeProfile(const QString& storagePath, QObject* parent)
{
    if (storagePath.isEmpty())
        return new QWebEngineProfile(parent);
    auto* profile = new QWebEngineProfile(u"orvane"_s, parent);
    profile->setPersistentStoragePath(storagePath);
    profile->setCachePath(QDir(storagePath).filePath(u"cache"_s));
    profile->setHttpCacheType(QWebEngineProfile::DiskHttpCache);
    // Without this a sign-in that lives in a session cookie would be gone at the next launch.
    profile->setPersistentCookiesPolicy(QWebEngineProfile::ForcePersistentCookies);
    return profile;
}

void configure(QWebEngineSettings& settings)
{
    struct Choice
    {
        QWebEngineSettings::WebAttribute attribute;
        bool value;
    };

    constexpr Choice choices[] = {
        {QWebEngineSettings::LocalContentCanAccessFileUrls, false},
        {QWebEngineSettings::LocalContentCanAccessRemoteUrls, false},
        // A window opens on a person's click or key only.
        {QWebEngineSettings::JavascriptCanOpenWindows, false},
        {QWebEngineSettings::FullScreenSupportEnabled, false},
        {QWebEngineSettings::ScreenCaptureEnabled, false},
        {QWebEngineSettings::AllowRunningInsecureContent, false},
        // A page that loads while the user types elsewhere does not take the keyboard.
        {QWebEngineSettings::FocusOnNavigationEnabled, false},
        // A track that is dropped beside its target does not replace the page.
        {QWebEngineSettings::NavigateOnDropEnabled, false},
        {QWebEngineSettings::AutoLoadIconsForPage, false},
    };
    for (const Choice& choice : choices)
        settings.setAttribute(choice.attribute, choice.value);
}

constexpr std::chrono::milliseconds longestWait = 3s;

/// Leaves what the page shows.
QCoro::Task<> leave(QPointer<WebPage> page)
{
    page->load(QUrl(u"about:blank"_s), longestWait);
    co_await qCoro(page.data(), &WebPage::finished, longestWait);
}

/// Shows an empty document of `origin` and clears in it what that origin has stored.
QCoro::Task<> clearStorage(QPointer<WebPage> page, QUrl origin)
{
    page->show(u"<!doctype html>"_s, origin);
    co_await qCoro(page.data(), &WebPage::finished, longestWait);
    co_await page->callAsync(SiteData::clearingScript(), QJsonObject(), longestWait);
}

} // namespace

WebProfile::WebProfile(const QString& storagePath, QObject* parent)
    : QObject(parent)
{
    const bool inMemory = storagePath.isEmpty();
    const QDir folder(storagePath);
    // Asked before the engine opens its store and so makes it.
    const bool newStore = inMemory || !folder.exists(u"Cookies"_s);
    profile_ = makeProfile(storagePath, this);
    profile_->setSpellCheckEnabled(false);
    configure(*profile_->settings());
    const QString record = inMemory ? QString() : folder.absoluteFilePath(u"cookies.json"_s);
    cookies_ = new CookieRecord(*profile_->cookieStore(), record, newStore, this);
}

WebProfile::~WebProfile()
{
    assert(pages_.isEmpty() && "a page outlived its profile");
    delete cookies_;
}

void WebProfile::noteVisit(const QUrl& address)
{
    if (const std::optional<QUrl> origin = SiteData::originOf(address))
        visitedOrigins_.insert(*origin);
}

QCoro::Task<> WebProfile::deleteSiteData(SiteData::HostTest belongs)
{
    // The engine does nothing for a profile before its first page.
    WebPage page(*this);
    co_await leave(&page);
    co_await leavePages(belongs);
    const QSet<QString> cookieHosts = co_await cookies_->deleteCookies(belongs);
    // In memory the engine would drop every cookie of every site along with the cache.
    if (!profile_->isOffTheRecord())
        profile_->clearHttpCache();
    profile_->clearAllVisitedLinks();
    const QSet<QUrl> stored = SiteData::originsWithDatabase(profile_->persistentStoragePath());
    const QSet<QUrl> origins = SiteData::originsOfHosts(cookieHosts) + stored + visitedOrigins_;
    for (const QUrl& origin : origins) {
        if (belongs(origin.host()))
            co_await clearStorage(&page, origin);
    }
}

QCoro::Task<> WebProfile::leavePages(SiteData::HostTest belongs)
{
    QList<QPointer<WebPage>> leaving;
    for (WebPage* page : std::as_const(pages_)) {
        if (belongs(page->url().host()))
            leaving.append(page);
    }
    for (const QPointer<WebPage>& page : std::as_const(leaving)) {
        if (!page)
            continue;
        co_await page->callAsync(SiteData::clearingScript(), QJsonObject(), longestWait);
        if (!page)
            continue;
        co_await leave(page);
    }
}

} // namespace orvane
