#pragma once

#include "platform/web/SiteData.h"

#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <QUrl>
#include <qcoro/qcorotask.h>

class QWebEngineProfile;

namespace orvane {

class CookieRecord;
class WebPage;

/// A browser profile: cookies and stored data of the web panes, kept on disk between launches. Made after the
/// application object and outlives every page on it.
class WebProfile : public QObject
{
    Q_OBJECT

public:
    /// Keeps its data in `storagePath`, with the cache in a folder below it; an empty path keeps all in memory only.
    explicit WebProfile(const QString& storagePath, QObject* parent = nullptr);
    ~WebProfile() override;

    QWebEngineProfile& engineProfile() { return *profile_; }

    /// Forgets the sites for whose hosts `belongs` is true. The profile outlives the task.
    ///
    /// In this order: pages of such a site clear their own storage and service workers and are left for about:blank;
    /// every cookie of such a host goes; so do all marks of visited links and the whole HTTP cache on disk, which the
    /// engine cannot tell apart by site; then local storage, databases and script caches of each such origin known:
    /// seen by a page of this profile, named by a cookie, or with a database on disk. The engine has no list of
    /// origins. So what can stay behind is the local storage of a host of the site that has neither cookie nor database
    /// and was not opened since the profile was made, and a service worker of a host that no page shows; a session
    /// lives in neither.
    QCoro::Task<> deleteSiteData(SiteData::HostTest belongs);

private:
    friend class WebPage;

    void add(WebPage& page) { pages_.append(&page); }

    void remove(WebPage& page) { pages_.removeOne(&page); }

    void noteVisit(const QUrl& address);
    QCoro::Task<> leavePages(SiteData::HostTest belongs);

    QWebEngineProfile* profile_;
    CookieRecord* cookies_;
    QList<WebPage*> pages_;
    QSet<QUrl> visitedOrigins_;
};

} // namespace orvane
