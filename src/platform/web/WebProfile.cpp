#include "platform/web/WebProfile.h"

#include "platform/web/WebPage.h"

#include <QDir>
#include <QNetworkCookie>
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

} // namespace

WebProfile::WebProfile(const QString& storagePath, QObject* parent)
    : QObject(parent)
    , profile_(makeProfile(storagePath, this))
{
    profile_->setSpellCheckEnabled(false);
    configure(*profile_->settings());
}

WebProfile::~WebProfile()
{
    assert(pages_.isEmpty() && "a page outlived its profile");
}

void WebProfile::noteVisit(const QUrl& address)
{
    if (const std::optional<QUrl> origin = SiteData::originOf(address))
        visitedOrigins_.insert(*origin);
}

QCoro::Task<> WebProfile::deleteSiteData(SiteData::HostTest belongs)
{
    co_await leavePages(belongs);
    const QSet<QString> cookieHosts = co_await SiteData::deleteCookies(*profile_, belongs);
    profile_->clearHttpCache();
    profile_->clearAllVisitedLinks();
    const QSet<QUrl> stored = SiteData::originsWithDatabase(profile_->persistentStoragePath());
    const QSet<QUrl> origins = SiteData::originsOfHosts(cookieHosts) + stored + visitedOrigins_;
    for (const QUrl& origin : origins) {
        if (belongs(origin.host()))
            co_await clearStorage(origin);
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
        co_await page->callAsync(SiteData::clearingScript(), QJsonObject(), 3s);
        if (!page)
            continue;
        page->load(QUrl(u"about:blank"_s));
        co_await qCoro(page.data(), &WebPage::finished, 3s);
    }
}

QCoro::Task<> WebProfile::clearStorage(QUrl origin)
{
    WebPage page(*this);
    page.show(u"<!doctype html>"_s, origin);
    co_await qCoro(&page, &WebPage::finished, 3s);
    co_await page.callAsync(SiteData::clearingScript(), QJsonObject(), 3s);
}

} // namespace orvane
