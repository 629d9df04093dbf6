#pragma once

#include <QSet>
#include <QString>
#include <QUrl>
#include <qcoro/qcorotask.h>

#include <functional>
#include <optional>

namespace orvane {

/// What a profile keeps of a site, and how it is found and removed.
namespace SiteData {

/// Whether a host belongs to a site.
using HostTest = std::function<bool(const QString& host)>;

/// Scheme, host and port of a web address; absent for any other.
std::optional<QUrl> originOf(const QUrl& address);

/// The origins, over https, of hosts.
QSet<QUrl> originsOfHosts(const QSet<QString>& hosts);

/// The origins that have a database in the profile folder, told by the names of the engine's folders.
QSet<QUrl> originsWithDatabase(const QString& storagePath);

/// A script that clears what its own origin has stored: local and session storage, databases, script caches and service
/// workers, each for itself, so that one that fails leaves the others.
QString clearingScript();

} // namespace SiteData
} // namespace orvane
