#pragma once

#include "platform/web/SiteData.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QThreadPool>
#include <QTimer>

#include <set>

class QNetworkCookie;
class QWebEngineCookieStore;

namespace orvane {

/// Where a cookie lies, which is all that it takes to delete it. Its value is none of our business.
struct CookiePlace
{
    QString name;
    /// With a dot in front where the hosts below it get the cookie too.
    QString domain;
    QString path;

    bool operator==(const CookiePlace&) const = default;
    bool operator<(const CookiePlace& other) const;

    QString host() const;
};

/// Which cookies a profile has.
///
/// The engine of this age lists no cookies: it tells of each as it comes and goes, and deletes one only by its name and
/// place. So they are noted as they come, in a file beside the engine's own store, which is written within a second and
/// so before the engine's, that waits up to thirty.
class CookieRecord : public QObject
{
    Q_OBJECT

public:
    /// Continues the record in `filePath`; an empty path keeps it in memory. `newStore` says that the store held no
    /// cookie when it was opened, so that a missing record is a complete one.
    CookieRecord(QWebEngineCookieStore& store, const QString& filePath, bool newStore, QObject* parent);
    ~CookieRecord() override;

    /// Deletes every cookie of such a host, and gives the hosts that had one; comes back when the engine has done it.
    /// Where the record of an earlier launch is lost, every cookie of the profile goes. The engine must have a page.
    QCoro::Task<QSet<QString>> deleteCookies(SiteData::HostTest belongs);

private:
    void read();
    void noteSoon();
    void write();
    void add(const QNetworkCookie& cookie);
    void remove(const QNetworkCookie& cookie);
    QCoro::Task<> engineHasDoneSo();

    QWebEngineCookieStore& store_;
    QString filePath_;
    std::set<CookiePlace> places_;
    bool complete_;
    QTimer writeSoon_;
    /// One thread: what is written last stays.
    QThreadPool writer_;
};

} // namespace orvane
