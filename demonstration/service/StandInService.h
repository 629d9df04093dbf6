#pragma once

#include "demonstration/service/Fault.h"
#include "demonstration/service/HttpServer.h"
#include "demonstration/service/Library.h"
#include "main/App/Endpoints.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUrl>

#include <chrono>
#include <memory>

namespace orvane::demo {

/// A stand-in for the Suno service, on loopback, over real HTTP: the site with its sign-in page, the API and the CDN.
/// It runs on a thread of its own; every call may be made from any thread.
class StandInService
{
public:
    explicit StandInService(LibraryOptions options = {});
    ~StandInService();
    StandInService(const StandInService&) = delete;
    StandInService& operator=(const StandInService&) = delete;

    /// Addresses that lead here, with the credential domain 127.0.0.1 only.
    Endpoints endpoints() const;
    /// As above for a service that listens on that port, in whichever process.
    static Endpoints endpointsAt(quint16 port);
    /// The same service under the name of another host, 127.0.0.2, where no credential may go. The product site is
    /// there.
    QUrl elsewhere() const;

    /// How long a token is shown before the next takes its place; it stays good for a minute more, and
    /// for one further time of that length at least. Default 5 s.
    void setTokenLifetime(std::chrono::milliseconds lifetime);
    /// A token that is good now, as the page would give it to a signed-in user.
    QString currentToken() const;
    /// Makes every token given out so far worthless.
    void expireTokens();
    /// Whether the API asks for a credential at all: a token, also in the cookie "__session", or the cookie "__client"
    /// of one who has signed in. Default true.
    void setTokenRequired(bool required);

    void setLibrary(LibraryOptions options);
    /// Adds tracks at the head of the feed, as newly made ones.
    void addTracks(int count);

    void script(const Fault& fault);
    void clearFaults();

    QList<SeenRequest> requests() const;
    void clearRequests();

    /// The library in the order of the feed, which its positions count from 0.
    QList<Track> tracks() const;
    QString lyricsOf(int position) const;
    QString projectId(int project) const;
    /// The exact bytes that the CDN serves for a track; not for a library with `assetBytes`.
    QByteArray audioOf(const QString& trackId) const;
    QByteArray artworkOf(const QString& trackId) const;

private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

} // namespace orvane::demo
