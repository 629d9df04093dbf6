#include "demonstration/service/HttpMessage.h"

namespace orvane::demo {
namespace {

std::optional<Request> parseHead(const QByteArray& head)
{
    const QList<QByteArray> lines = head.split('\n');
    const QList<QByteArray> words = lines.first().trimmed().split(' ');
    if (words.size() != 3 || !words[1].startsWith('/') || !words[2].startsWith("HTTP/1."))
        return std::nullopt;
    Request request{.method = words[0], .target = words[1]};
    for (const QByteArray& line : lines.sliced(1)) {
        const qsizetype colon = line.indexOf(':');
        if (colon > 0)
            request.headers.append({line.first(colon).trimmed(), line.sliced(colon + 1).trimmed()});
    }
    return request;
}

} // namespace

QByteArray Request::header(QByteArrayView name) const
{
    for (const auto& [key, value] : headers) {
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    }
    return {};
}

QByteArray Request::cookie(QByteArrayView name) const
{
    for (const QByteArray& part : header("Cookie").split(';')) {
        const QByteArray pair = part.trimmed();
        const qsizetype equals = pair.indexOf('=');
        if (equals > 0 && QByteArrayView(pair).first(equals) == name)
            return pair.sliced(equals + 1);
    }
    return {};
}

StreamedBody Response::stream(qint64 size) const
{
    if (streamed)
        return {.size = size, .read = streamed->read};
    return {.size = size, .read = [bytes = body](qint64 offset, qint64 most) { return bytes.mid(offset, most); }};
}

QByteArray Response::wholeBody() const
{
    if (!streamed)
        return body;
    QByteArray bytes;
    while (bytes.size() < streamed->size)
        bytes += streamed->read(bytes.size(), streamed->size - bytes.size());
    return bytes;
}

std::optional<Request> takeRequest(QByteArray& buffer, bool& isBad)
{
    const qsizetype end = buffer.indexOf("\r\n\r\n");
    isBad = buffer.size() > largestRequest;
    if (end < 0 || isBad)
        return std::nullopt;
    std::optional<Request> request = parseHead(buffer.first(end));
    isBad = !request;
    if (isBad)
        return std::nullopt;
    const qsizetype bodySize = request->header("Content-Length").toLongLong();
    const qsizetype whole = end + 4 + bodySize;
    isBad = bodySize < 0 || whole > largestRequest;
    if (isBad || buffer.size() < whole)
        return std::nullopt;
    request->body = buffer.sliced(end + 4, bodySize);
    buffer.remove(0, whole);
    return request;
}

QByteArray reasonOf(int status)
{
    switch (status) {
    case 200:
        return "OK";
    case 204:
        return "No Content";
    case 302:
        return "Found";
    case 400:
        return "Bad Request";
    case 401:
        return "Unauthorized";
    case 403:
        return "Forbidden";
    case 404:
        return "Not Found";
    case 429:
        return "Too Many Requests";
    case 500:
        return "Internal Server Error";
    case 502:
        return "Bad Gateway";
    case 503:
        return "Service Unavailable";
    case 504:
        return "Gateway Timeout";
    default:
        return "Status";
    }
}

} // namespace orvane::demo
