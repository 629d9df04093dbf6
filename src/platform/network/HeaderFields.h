#pragma once

#include "platform/network/HttpClient.h"

#include <QByteArrayView>
#include <QList>

#include <optional>

namespace orvane {

/// Value of the first header of that name, compared without case; absent if there is none.
std::optional<QByteArray> firstValue(const QList<HttpHeader>& headers, QByteArrayView name);

/// The elements of all headers of that name, split at commas and trimmed; empty elements are left out.
QList<QByteArray> listedValues(const QList<HttpHeader>& headers, QByteArrayView name);

/// The announced length in bytes, 0 and up; absent where there is none. Throws HttpError with the code Transport where
/// an announcement is no number, negative, beyond 63 bits, or contradicts another.
std::optional<qint64> contentLength(const QList<HttpHeader>& headers);

/// Whether the body comes in chunks. Throws HttpError with the code Transport for any other transfer coding.
bool isChunked(const QList<HttpHeader>& headers);

/// Whether the connection stays open behind the answer.
bool keepsAlive(const QList<HttpHeader>& headers, bool http11);

/// The one coding of the body in lower case; empty for none. Throws HttpError with the code Transport for several.
QByteArray contentCoding(const QList<HttpHeader>& headers);

/// Whether name and value can stand on a header line without becoming another line.
bool isSendable(const HttpHeader& header);

} // namespace orvane
