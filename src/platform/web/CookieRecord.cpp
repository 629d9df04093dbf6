#include "platform/web/CookieRecord.h"

#include "platform/filesystem/AtomicFile.h"
#include "platform/web/ScriptSource.h"

#include <QDateTime>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QNetworkCookie>
#include <QPromise>
#include <QWebEngineCookieStore>
#include <qcoro/qcorofuture.h>

#include <chrono>
#include <tuple>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace orvane {
namespace {

constexpr std::chrono::milliseconds writeDelay = 500ms;
constexpr std::chrono::milliseconds longestWait = 3s;
/// A name that no site can have.
const QString markHost = u"mark.invalid"_s;

CookiePlace placeOf(const QNetworkCookie& cookie)
{
    return {.name = QString::fromLatin1(cookie.name()), .domain = cookie.domain(), .path = cookie.path()};
}

QJsonArray toJson(const std::set<CookiePlace>& places)
{
    QJsonArray list;
    for (const CookiePlace& place : places)
        list.append(QJsonArray{place.name, place.domain, place.path});
    return list;
}

void deleteAt(QWebEngineCookieStore& store, const CookiePlace& place)
{
    QNetworkCookie cookie(place.name.toLatin1());
    cookie.setDomain(place.domain);
    cookie.setPath(place.path);
    // Over https the engine finds a cookie whether it is a secure one or not.
    QUrl origin;
    origin.setScheme(u"https"_s);
    origin.setHost(place.host());
    origin.setPath(place.path);
    store.deleteCookie(cookie, origin);
}

/// Waits until the engine has done what was asked of its cookies. It does so in the order of asking, and tells of a
/// cookie that was added: so a mark is added last.
class EngineMark : public QObject
{
public:
    explicit EngineMark(QWebEngineCookieStore& store)
        : store_(store)
        , mark_(ScriptSource::freshName().toLatin1(), "1")
    {
        mark_.setExpirationDate(QDateTime::currentDateTimeUtc().addSecs(60));
        promise_.start();
        connect(&store, &QWebEngineCookieStore::cookieAdded, this, [this](const QNetworkCookie& cookie) {
            if (cookie.name() == mark_.name())
                end();
        });
        QTimer::singleShot(longestWait, this, [this] { end(); });
        store_.setCookie(mark_, address());
    }

    QFuture<void> reached() { return promise_.future(); }

private:
    static QUrl address() { return QUrl(u"https://"_s + markHost + u'/'); }

    void end()
    {
        if (std::exchange(ended_, true))
            return;
        store_.deleteCookie(mark_, address());
        promise_.finish();
    }

    QWebEngineCookieStore& store_;
    QNetworkCookie mark_;
    QPromise<void> promise_;
    bool ended_ = false;
};

} // namespace

bool CookiePlace::operator<(const CookiePlace& other) const
{
    return std::tie(name, domain, path) < std::tie(other.name, other.domain, other.path);
}

QString CookiePlace::host() const
{
    return domain.startsWith(u'.') ? domain.sliced(1) : domain;
}

CookieRecord::CookieRecord(QWebEngineCookieStore& store, const QString& filePath, bool newStore, QObject* parent)
    : QObject(parent)
    , store_(store)
    , filePath_(filePath)
    , complete_(newStore)
{
    writer_.setMaxThreadCount(1);
    writeSoon_.setSingleShot(true);
    writeSoon_.setInterval(writeDelay);
    connect(&writeSoon_, &QTimer::timeout, this, &CookieRecord::write);
    connect(&store_, &QWebEngineCookieStore::cookieAdded, this, &CookieRecord::add);
    connect(&store_, &QWebEngineCookieStore::cookieRemoved, this, &CookieRecord::remove);
    if (!filePath_.isEmpty())
        read();
}

CookieRecord::~CookieRecord()
{
    if (writeSoon_.isActive())
        write();
    writer_.waitForDone();
}

void CookieRecord::read()
{
    QFile file(filePath_);
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    complete_ = complete_ || document.isArray();
    const QJsonArray list = document.array();
    for (const QJsonValue& each : list) {
        const QJsonArray place = each.toArray();
        places_.insert({place.at(0).toString(), place.at(1).toString(), place.at(2).toString()});
    }
}

void CookieRecord::add(const QNetworkCookie& cookie)
{
    const CookiePlace place = placeOf(cookie);
    if (place.host() != markHost && places_.insert(place).second)
        noteSoon();
}

void CookieRecord::remove(const QNetworkCookie& cookie)
{
    if (places_.erase(placeOf(cookie)) > 0)
        noteSoon();
}

void CookieRecord::noteSoon()
{
    if (!filePath_.isEmpty() && !writeSoon_.isActive())
        writeSoon_.start();
}

void CookieRecord::write()
{
    writeSoon_.stop();
    // An incomplete record that is written would pass for a complete one at the next launch.
    if (!complete_)
        return;
    const QByteArray bytes = QJsonDocument(toJson(places_)).toJson(QJsonDocument::Compact);
    writer_.start([path = filePath_, bytes] {
        try {
            writeAtomically(path, bytes, FileAccess::OwnerOnly);
        } catch (const FileError&) {
            // Without the record a sign-out takes every cookie of the profile, which is the safe side.
            QFile::remove(path);
        }
    });
}

QCoro::Task<QSet<QString>> CookieRecord::deleteCookies(SiteData::HostTest belongs)
{
    QSet<QString> hosts;
    for (const CookiePlace& place : places_) {
        if (!belongs(place.host()))
            continue;
        hosts.insert(place.host());
        deleteAt(store_, place);
    }
    if (!complete_)
        store_.deleteAllCookies();
    co_await engineHasDoneSo();
    std::erase_if(places_, [&](const CookiePlace& place) { return belongs(place.host()); });
    complete_ = true;
    noteSoon();
    co_return hosts;
}

QCoro::Task<> CookieRecord::engineHasDoneSo()
{
    EngineMark mark(store_);
    const QFuture<void> reached = mark.reached();
    co_await reached;
}

} // namespace orvane
