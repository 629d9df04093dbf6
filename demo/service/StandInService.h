#pragma once

#include "main/App/Endpoints.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace orvane::demo {

/// What the stand-in library holds.
struct LibraryOptions
{
    /// Tracks in the whole library; the first ones are the telling ones (no audio address, no lyrics, untitled, hostile
    /// titles, two with one title), the rest are plain.
    int tracks = 12;
    int pageSize = 50;
    int projects = 2;
    /// The same seed gives the same library, byte for byte.
    unsigned seed = 1;
    /// Length of the composed recordings, in seconds.
    double shortestSeconds = 20;
    double longestSeconds = 60;
    /// Bytes of filler lyrics for each plain track; 0 for the composed ones.
    int lyricsBytes = 0;
    /// When set, every recording is this many bytes of a repeated composed one and is made as it is sent.
    std::optional<qint64> assetBytes;
};

/// A fault to answer a request with. Applied in the order in which they were scripted; each serves `times` requests.
struct Fault
{
    enum class Kind {
        status,
        resetInBody,
        closeBeforeAnswer,
        silence,
        dribble,
        contentLengthTooLarge,
        contentLengthTooSmall,
        contentLengthNegative,
        contentLengthAbsurd,
        contentLengthTwice,
        chunked,
        chunkedCut,
        chunkedBadSize,
        emptyBody,
        gzip,
        gzipCut,
        gzipBadChecksum,
        gzipBomb,
        notHttp,
        redirect,
        redirectLoop,
        html,
        badJson,
        samePageForEver,
    };

    Kind kind = Kind::status;
    /// Requests whose path and query contain this text; empty for all.
    QString where;
    int times = 1;
    /// Matching requests that pass untouched before the first that does not.
    int after = 0;
    int status = 500;
    /// Value of the Retry-After header; none when absent.
    std::optional<QByteArray> retryAfter;
    /// Target of a redirect.
    QByteArray location;
};

/// A request as it came over the wire.
struct SeenRequest
{
    QByteArray method;
    /// Path and query.
    QByteArray target;
    QByteArray host;
    QByteArray authorization;
    QByteArray cookie;
    QByteArray userAgent;
    QByteArray acceptEncoding;
    /// Status that was answered; 0 where none was.
    int status = 0;
};

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

    /// How long a token is good for and shown before the next takes its place. Default 5 s. Each stays valid for one
    /// further period.
    void setTokenLifetime(std::chrono::milliseconds lifetime);
    /// A token that is valid now, as the page would give it to a signed-in user.
    QString currentToken() const;
    /// Makes every token given out so far worthless.
    void expireTokens();
    /// Whether the API asks for a token at all.
    void setTokenRequired(bool required);

    void setLibrary(LibraryOptions options);
    /// Adds tracks at the head of the feed, as newly made ones.
    void addTracks(int count);

    void script(Fault fault);
    void clearFaults();

    QList<SeenRequest> requests() const;
    void clearRequests();

    /// What the feed's clip at this position (counted from 0) truly is.
    struct Track
    {
        QString id;
        QString title;
        double bpm = 0;
        QString key;
        double seconds = 0;
        bool hasLyrics = false;
        bool hasAudioAddress = true;
        QString artworkExtension;
    };
    QList<Track> tracks() const;
    /// The exact bytes that the CDN serves for a track.
    QByteArray audioOf(const QString& trackId) const;
    QByteArray artworkOf(const QString& trackId) const;

private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

} // namespace orvane::demo
