#pragma once

#include <QByteArray>
#include <QList>
#include <QUrl>
#include <QUrlQuery>

#include <functional>
#include <optional>
#include <utility>

namespace orvane::demo {

/// A request as a handler sees it.
struct Request
{
    QByteArray method;
    /// Path and query, as they came.
    QByteArray target;
    QList<std::pair<QByteArray, QByteArray>> headers;
    QByteArray body;

    /// Value of the first header of that name in any case; empty without one.
    QByteArray header(QByteArrayView name) const;

    QString path() const { return url().path(); }

    QString query(const QString& name) const { return QUrlQuery(url()).queryItemValue(name, QUrl::FullyDecoded); }

    /// Value of the cookie of that name; empty without one.
    QByteArray cookie(QByteArrayView name) const;

private:
    QUrl url() const { return QUrl::fromEncoded("http://stand-in" + target); }
};

/// A body that is made while it is sent.
struct StreamedBody
{
    qint64 size = 0;
    /// At most `most` bytes from `offset`, at least one.
    std::function<QByteArray(qint64 offset, qint64 most)> read;
};

/// What a handler answers.
struct Response
{
    int status = 200;
    QByteArray contentType = "application/json";
    QByteArray body;
    QList<std::pair<QByteArray, QByteArray>> headers;
    std::optional<StreamedBody> streamed;
    /// Makes a body that takes time; called on another thread.
    std::function<QByteArray()> made;

    qint64 size() const { return streamed ? streamed->size : body.size(); }

    /// The first `size` bytes of the body, to be read as they are sent.
    StreamedBody stream(qint64 size) const;
    /// All of the body, in memory.
    QByteArray wholeBody() const;
};

inline constexpr qsizetype largestRequest = 1024 * 1024;

/// Takes one whole request off the front of `buffer`; absent while it is incomplete. `isBad` is set for what is no
/// request, or one beyond `largestRequest`.
std::optional<Request> takeRequest(QByteArray& buffer, bool& isBad);

/// The words that go with a status.
QByteArray reasonOf(int status);

} // namespace orvane::demo
