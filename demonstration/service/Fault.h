#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <optional>

namespace orvane::demo {

/// A fault to answer a request with. The first fault that was scripted for a request and is not used up decides about
/// it, also when it lets it pass.
struct Fault
{
    enum class Kind
    {
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
    /// Requests that it serves. A loop and a page that comes for ever have no end before `clearFaults`.
    int times = 1;
    /// Matching requests that pass untouched before the first that does not.
    int after = 0;
    int status = 500;
    /// Value of the Retry-After header; none when absent.
    std::optional<QByteArray> retryAfter;
    /// Target of a redirect.
    QByteArray location;
    /// Time from one byte to the next of a body that dribbles.
    std::chrono::milliseconds pace{1000};
};

} // namespace orvane::demo
