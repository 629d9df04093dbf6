#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace orvane::demo {

/// A fault to answer a request with. Faults apply in the order in which they were scripted; each serves `times`
/// requests.
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
    int times = 1;
    /// Matching requests that pass untouched before the first that does not.
    int after = 0;
    int status = 500;
    /// Value of the Retry-After header; none when absent.
    std::optional<QByteArray> retryAfter;
    /// Target of a redirect.
    QByteArray location;
};

} // namespace orvane::demo
