#include "demo/service/WireAnswer.h"

#include "demo/service/Gzip.h"

namespace orvane::demo {
namespace {

using End = WireAnswer::End;
using Headers = QList<std::pair<QByteArray, QByteArray>>;

QByteArray head(const Response& response, const Headers& framing)
{
    QByteArray bytes = "HTTP/1.1 " + QByteArray::number(response.status) + ' ' + reasonOf(response.status) + "\r\n";
    bytes += "Content-Type: " + response.contentType + "\r\n";
    for (const auto& [name, value] : response.headers + framing)
        bytes += name + ": " + value + "\r\n";
    return bytes + "\r\n";
}

std::pair<QByteArray, QByteArray> length(qint64 size)
{
    return {"Content-Length", QByteArray::number(size)};
}

QByteArray wholeBody(const Response& response)
{
    QByteArray body;
    while (body.size() < response.size())
        body += response.read(body.size(), response.size() - body.size());
    return body;
}

WireAnswer closing(const Response& response, const Headers& framing, const QByteArray& body, End end = End::close)
{
    return {.bytes = head(response, framing) + body, .end = end, .status = response.status};
}

WireAnswer withLength(const Response& response, const QByteArray& stated)
{
    return closing(response, {{"Content-Length", stated}}, wholeBody(response));
}

QByteArray chunk(const QByteArray& bytes)
{
    return QByteArray::number(bytes.size(), 16) + "\r\n" + bytes + "\r\n";
}

QByteArray chunksOf(const QByteArray& body)
{
    constexpr qsizetype size = 1000;
    QByteArray chunks;
    for (qsizetype at = 0; at < body.size(); at += size)
        chunks += chunk(body.mid(at, size));
    return chunks;
}

WireAnswer chunked(const Response& response, const QByteArray& chunks, End end)
{
    return closing(response, {{"Transfer-Encoding", "chunked"}}, chunks, end);
}

WireAnswer gzipped(const Response& response, const QByteArray& packed)
{
    return closing(response, {{"Content-Encoding", "gzip"}, length(packed.size())}, packed, End::keepAlive);
}

WireAnswer replaced(const Request& request, int status, const QByteArray& type, const QByteArray& body,
                    const Headers& headers = {})
{
    return wellAnswered(request, {.status = status, .contentType = type, .body = body, .headers = headers});
}

WireAnswer withStatus(const Request& request, const Fault& fault)
{
    Headers headers;
    if (fault.retryAfter)
        headers.append({"Retry-After", *fault.retryAfter});
    return replaced(request, fault.status, "application/json", R"({"detail": "fault"})", headers);
}

WireAnswer redirected(const Request& request, const QByteArray& location)
{
    return replaced(request, 302, "text/plain", "elsewhere", {{"Location", location}});
}

QByteArray withBadChecksum(QByteArray packed)
{
    // The checksum stands eight bytes before the end.
    const qsizetype place = packed.size() - 8;
    packed[place] = static_cast<char>(packed[place] ^ 0x55);
    return packed;
}

bool accepts(const Request& request, const QByteArray& coding)
{
    return request.header("Accept-Encoding").contains(coding);
}

} // namespace

WireAnswer wellAnswered(const Request& request, const Response& response)
{
    const bool closes = request.header("Connection").compare("close", Qt::CaseInsensitive) == 0;
    WireAnswer answer{.bytes = head(response, {length(response.size())}),
                      .end = closes ? End::close : End::keepAlive,
                      .status = response.status};
    if (request.method == "HEAD")
        return answer;
    if (response.streamed)
        answer.streamed = response.streamed;
    else
        answer.bytes += response.body;
    return answer;
}

WireAnswer badlyAnswered(const Request& request, const Response& response, const Fault& fault)
{
    const QByteArray body = wholeBody(response);
    const QByteArray half = body.first(body.size() / 2);
    switch (fault.kind) {
    case Fault::Kind::status:
        return withStatus(request, fault);
    case Fault::Kind::resetInBody:
        return closing(response, {length(body.size())}, half, End::reset);
    case Fault::Kind::closeBeforeAnswer:
        return {.end = End::close};
    case Fault::Kind::silence:
        return {.end = End::holdOpen};
    case Fault::Kind::dribble:
        return {.bytes = head(response, {length(body.size())}),
                .dribbled = body,
                .end = End::close,
                .status = response.status};
    case Fault::Kind::contentLengthTooLarge:
        return withLength(response, QByteArray::number(body.size() + 1000));
    case Fault::Kind::contentLengthTooSmall:
        return withLength(response, QByteArray::number(std::max<qsizetype>(0, body.size() - 10)));
    case Fault::Kind::contentLengthNegative:
        return withLength(response, "-5");
    case Fault::Kind::contentLengthAbsurd:
        return withLength(response, "9223372036854775807999");
    case Fault::Kind::contentLengthTwice:
        return closing(response, {length(body.size()), length(body.size() / 2)}, body);
    case Fault::Kind::chunked:
        return chunked(response, chunksOf(body) + "0\r\n\r\n", End::keepAlive);
    case Fault::Kind::chunkedCut:
        return chunked(response, chunksOf(body).first(body.size() / 2), End::close);
    case Fault::Kind::chunkedBadSize:
        return chunked(response, "ZZ\r\n" + body + "\r\n0\r\n\r\n", End::close);
    case Fault::Kind::emptyBody:
        return replaced(request, 200, response.contentType, {});
    case Fault::Kind::gzip:
        return accepts(request, "gzip") ? gzipped(response, gzip(body)) : wellAnswered(request, response);
    case Fault::Kind::gzipCut:
        return gzipped(response, gzip(body).chopped(12));
    case Fault::Kind::gzipBadChecksum:
        return gzipped(response, withBadChecksum(gzip(body)));
    case Fault::Kind::gzipBomb:
        return gzipped(response, gzipOfBlanks(200LL * 1024 * 1024));
    case Fault::Kind::notHttp:
        return {.bytes = "SSH-2.0-something_else\r\n", .end = End::close};
    case Fault::Kind::redirect:
        return redirected(request, fault.location);
    case Fault::Kind::redirectLoop:
        return redirected(request, request.target);
    case Fault::Kind::html:
        return replaced(request, 200, "text/html", "<!doctype html><title>Sign in</title><p>Sign in first.");
    case Fault::Kind::badJson:
        return replaced(request, 200, "application/json", R"({"clips": [{"id": )");
    case Fault::Kind::samePageForEver:
        break;
    }
    return wellAnswered(request, response);
}

} // namespace orvane::demo
