#include "platform/web/SiteData.h"

#include <QDir>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace orvane {

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
