#include "demonstration/service/WireAnswer.h"

#include "demonstration/service/Gzip.h"

#include <algorithm>

namespace orvane::demo {
namespace {

using End = WireAnswer::End;
using Kind = Fault::Kind;
using Headers = QList<std::pair<QByteArray, QByteArray>>;

constexpr int bombMebibytes = 512;

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

/// The first `size` bytes of the body behind the framing, and then the end.
WireAnswer framed(const Response& response, const Headers& framing, qint64 size, End end = End::close)
{
    return {.bytes = head(response, framing), .streamed = response.stream(size), .end = end, .status = response.status};
}

WireAnswer withLength(const Response& response, const QByteArray& stated)
{
    return framed(response, {{"Content-Length", stated}}, response.size());
}

WireAnswer dribbling(const Response& response, std::chrono::milliseconds pace)
{
    WireAnswer answer = framed(response, {length(response.size())}, response.size());
    answer.pace = pace;
    return answer;
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
    return {
        .bytes = head(response, {{"Transfer-Encoding", "chunked"}}) + chunks, .end = end, .status = response.status};
}

WireAnswer gzipped(const Response& response, const QByteArray& packed)
{
    return {.bytes = head(response, {{"Content-Encoding", "gzip"}, length(packed.size())}) + packed,
            .status = response.status};
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

bool closes(const Request& request)
{
    return request.header("Connection").compare("close", Qt::CaseInsensitive) == 0;
}

} // namespace

bool needsBody(Kind kind)
{
    static constexpr Kind without[] = {
        Kind::status,  Kind::closeBeforeAnswer, Kind::silence,      Kind::emptyBody, Kind::gzipBomb,
        Kind::notHttp, Kind::redirect,          Kind::redirectLoop, Kind::html,      Kind::badJson};
    return std::find(std::begin(without), std::end(without), kind) == std::end(without);
}

WireAnswer wellAnswered(const Request& request, const Response& response)
{
    WireAnswer answer{.bytes = head(response, {length(response.size())}),
                      .end = closes(request) ? End::close : End::keepAlive,
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
    const qint64 size = response.size();
    switch (fault.kind) {
    case Kind::status:
        return withStatus(request, fault);
    case Kind::resetInBody:
        return framed(response, {length(size)}, size / 2, End::reset);
    case Kind::closeBeforeAnswer:
        return {.end = End::close};
    case Kind::silence:
        return {.end = End::holdOpen};
    case Kind::dribble:
        return dribbling(response, fault.pace);
    case Kind::contentLengthTooLarge:
        return withLength(response, QByteArray::number(size + 1000));
    case Kind::contentLengthTooSmall:
        return withLength(response, QByteArray::number(std::max<qint64>(0, size - 10)));
    case Kind::contentLengthNegative:
        return withLength(response, "-5");
    case Kind::contentLengthAbsurd:
        return withLength(response, "9223372036854775807999");
    case Kind::contentLengthTwice:
        return framed(response, {length(size), length(size / 2)}, size);
    case Kind::chunked:
        return chunked(response, chunksOf(response.wholeBody()) + "0\r\n\r\n", End::keepAlive);
    case Kind::chunkedCut:
        return chunked(response, chunksOf(response.wholeBody()).first(size / 2), End::close);
    case Kind::chunkedBadSize:
        return chunked(response, "ZZ\r\n" + response.wholeBody() + "\r\n0\r\n\r\n", End::close);
    case Kind::emptyBody:
        return replaced(request, 200, response.contentType, {});
    case Kind::gzip:
        return accepts(request, "gzip") ? gzipped(response, gzip(response.wholeBody()))
                                        : wellAnswered(request, response);
    case Kind::gzipCut:
        return gzipped(response, gzip(response.wholeBody()).chopped(12));
    case Kind::gzipBadChecksum:
        return gzipped(response, withBadChecksum(gzip(response.wholeBody())));
    case Kind::gzipBomb:
        return gzipped(response, gzipOfBlanks(bombMebibytes));
    case Kind::notHttp:
        return {.bytes = "SSH-2.0-something_else\r\n", .end = End::close};
    case Kind::redirect:
        return redirected(request, fault.location);
    case Kind::redirectLoop:
        return redirected(request, request.target);
    case Kind::html:
        return replaced(request, 200, "text/html", "<!doctype html><title>Sign in</title><p>Sign in first.");
    case Kind::badJson:
        return replaced(request, 200, "application/json", R"({"clips": [{"id": )");
    case Kind::samePageForEver:
        break;
    }
    return wellAnswered(request, response);
}

} // namespace orvane::demo
