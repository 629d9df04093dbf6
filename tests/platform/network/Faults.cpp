#include "tests/platform/network/Faults.h"

#include "tests/platform/network/Gzip.h"

namespace orvane::test {

namespace {

using Code = HttpError::Code;

constexpr Ending answered(int status)
{
    return {.status = status, .code = std::nullopt};
}

constexpr Ending refused(Code code)
{
    return {.status = 0, .code = code};
}

NetworkFault fault(std::string name, Script script, Ending both, QByteArray words = {})
{
    return {.name = std::move(name), .script = std::move(script), .data = both, .download = both, .words = words};
}

NetworkFault statusFault(const QByteArray& status, const QByteArray& headerLines = {})
{
    const std::string suffix = headerLines.isEmpty() ? "" : "WithRetryAfter";
    return fault("status" + status.first(3).toStdString() + suffix, {send(answer(status, headerLines, "why"))},
                 answered(status.first(3).toInt()));
}

QList<NetworkFault> statusFaults()
{
    return {statusFault("401 Unauthorized", "WWW-Authenticate: Basic realm=\"x\"\r\n"),
            statusFault("403 Forbidden"),
            statusFault("404 Not Found"),
            statusFault("429 Too Many Requests"),
            statusFault("429 Too Many Requests", "Retry-After: 1000000000\r\n"),
            statusFault("500 Internal Server Error"),
            statusFault("502 Bad Gateway"),
            statusFault("503 Service Unavailable"),
            statusFault("504 Gateway Timeout"),
            fault("html", {send(answer("200 OK", "Content-Type: text/html\r\n", "<html>"))}, answered(200)),
            fault("emptyAnswer", {send(answer("200 OK", "", ""))}, answered(200))};
}

QList<NetworkFault> cutFaults()
{
    const Ending cut = refused(Code::Transport);
    const QByteArray half = answerUnmeasured("200 OK", "Content-Length: 50\r\n", "hello");
    return {fault("closeBeforeAnswer", {}, cut, "closed before an answer"),
            fault("resetBeforeAnswer", {reset()}, cut),
            fault("cutInHead", {send("HTTP/1.1 200 OK\r\nContent-Len")}, cut, "closed before an answer"),
            fault("closeInBody", {send(half)}, cut, "truncated transfer (5 of 50 bytes)"),
            fault("resetInBody", {send(half), gate(), reset()}, cut),
            fault("notHttp", {send("220 mail.example ESMTP\r\n"), hold()}, cut, "not HTTP"),
            fault("notHttpWithoutLine", {send("\x16\x03\x01"), hold()}, cut, "not HTTP")};
}

QList<NetworkFault> slowFaults()
{
    static constexpr std::chrono::milliseconds soon{150};
    const auto silent = [](std::string name, Script script) {
        NetworkFault made = fault(std::move(name), std::move(script), refused(Code::TimedOut), "no answer for 0.15 s");
        made.timeout = soon;
        return made;
    };
    const auto slow = [](std::string name, Script script) {
        NetworkFault made = fault(std::move(name), std::move(script), refused(Code::Stalled), "stalled (127.0.0.1)");
        made.stallWindow = soon;
        return made;
    };
    const QByteArray start = answerUnmeasured("200 OK", "Content-Length: 8000\r\n", "hello");
    const QByteArray headStart = "HTTP/1.1 200 OK\r\nX: ";
    return {silent("silence", {hold()}),
            silent("silenceInHead", {send(headStart), hold()}),
            silent("silenceInBody", {send(start), hold()}),
            slow("dribbledHead", {send(headStart), dribble()}),
            slow("dribbledBody", {send(start), dribble()}),
            slow("startAndThenTooLittle", {send(start), send("world"), hold()})};
}

QList<NetworkFault> lengthFaults()
{
    const auto announced = [](const QByteArray& headerLines) {
        return Script{send(answerUnmeasured("200 OK", headerLines, "hello"))};
    };
    const Ending refusal = refused(Code::Transport);
    return {
        fault("lengthTooLarge", announced("Content-Length: 6\r\n"), refusal, "truncated transfer (5 of 6 bytes)"),
        fault("lengthTooSmall", announced("Content-Length: 3\r\n"), refusal, "longer than announced"),
        fault("lengthZero", announced("Content-Length: 0\r\n"), refusal, "longer than announced"),
        fault("lengthNegative", announced("Content-Length: -5\r\n"), refusal, "invalid Content-Length"),
        fault("lengthSigned", announced("Content-Length: +5\r\n"), refusal, "invalid Content-Length"),
        fault("lengthEmpty", announced("Content-Length:\r\n"), refusal, "invalid Content-Length"),
        fault("lengthHex", announced("Content-Length: 0x5\r\n"), refusal, "invalid Content-Length"),
        fault("lengthBeyondNumbers", announced("Content-Length: 99999999999999999999\r\n"), refusal,
              "invalid Content-Length"),
        fault("lengthTwice", announced("Content-Length: 5\r\nContent-Length: 3\r\n"), refusal,
              "invalid Content-Length"),
        fault("lengthTwiceInOneLine", announced("Content-Length: 5, 3\r\n"), refusal, "invalid Content-Length"),
        fault("lengthTwiceTheSame", announced("Content-Length: 5\r\nContent-Length: 5\r\n"), answered(200)),
        {.name = "lengthAbsurd",
         .script = announced("Content-Length: 1000000000000000000\r\n"),
         .data = refused(Code::TooLarge),
         .download = refusal,
         .words = {}},
    };
}

QList<NetworkFault> chunkFaults()
{
    const auto chunks = [](const QByteArray& framed) {
        return Script{send(answerUnmeasured("200 OK", "Transfer-Encoding: chunked\r\n", framed))};
    };
    const Ending refusal = refused(Code::Transport);
    return {
        fault("chunked", chunks("5\r\nhello\r\n1;x=y\r\n!\r\n0\r\nTrailer: x\r\n\r\n"), answered(200)),
        fault("chunkBadFirstSize", chunks("zz\r\nhello\r\n0\r\n\r\n"), refusal, "invalid chunk size"),
        fault("chunkBadLaterSize", chunks("5\r\nhello\r\nzz\r\nworld\r\n0\r\n\r\n"), refusal, "invalid chunk size"),
        fault("chunkNegativeSize", chunks("5\r\nhello\r\n-5\r\nworld\r\n0\r\n\r\n"), refusal, "invalid chunk size"),
        fault("chunkAbsurdSize", chunks("ffffffffffffffffffff\r\nhello\r\n"), refusal, "invalid chunk size"),
        fault("chunkLongerThanItsSize", chunks("3\r\nhello\r\n0\r\n\r\n"), refusal, "does not end where it should"),
        fault("chunkCutWithin", chunks("5\r\nhello\r\n5\r\nwo"), refusal, "truncated transfer"),
        fault("chunkCutBetween", chunks("5\r\nhello\r\n"), refusal, "truncated transfer"),
        fault("chunkCutInSize", chunks("5\r\nhello\r\n1"), refusal, "truncated transfer"),
        fault("chunkCutBeforeTrailersEnd", chunks("5\r\nhello\r\n0\r\n"), refusal, "truncated transfer"),
        fault("chunkedAndMore", chunks("0\r\n\r\nmore"), refusal, "longer than announced"),
        fault("transferCodingUnknown",
              {send(answerUnmeasured("200 OK", "Transfer-Encoding: gzip, chunked\r\n", "0\r\n\r\n"))}, refusal),
    };
}

QByteArray withBrokenChecksum(QByteArray packed)
{
    packed[packed.size() - 6] = static_cast<char>(packed[packed.size() - 6] ^ 1);
    return packed;
}

QList<NetworkFault> gzipFaults()
{
    const auto coded = [](const QByteArray& packed) {
        return Script{send(answer("200 OK", "Content-Encoding: gzip\r\n", packed))};
    };
    const auto uncounted = [](const QByteArray& packed) {
        return Script{send(answerUnmeasured("200 OK", "Content-Encoding: gzip\r\n", packed))};
    };
    // A download never asks for a coding: whatever comes in one is not the file.
    const auto onlyData = [](std::string name, Script script, Ending data, QByteArray words = {}) {
        return NetworkFault{.name = std::move(name),
                            .script = std::move(script),
                            .data = data,
                            .download = refused(Code::Transport),
                            .words = std::move(words)};
    };
    const Ending refusal = refused(Code::Transport);
    const QByteArray packed = gzip(QByteArray("0123456789abcdef").repeated(50));
    return {
        onlyData("gzip", coded(packed), answered(200)),
        onlyData("gzipOfTwoMembers", coded(packed + packed), answered(200)),
        onlyData("gzipCut", uncounted(packed.chopped(20)), refusal),
        onlyData("gzipCutInTail", uncounted(packed.chopped(1)), refusal),
        onlyData("gzipBadChecksum", coded(withBrokenChecksum(packed)), refusal),
        onlyData("gzipAndMore", coded(packed + "more"), refusal),
        onlyData("gzipThatIsNone", coded("hello"), refusal),
        onlyData("gzipBomb", coded(gzip(QByteArray(smallLimits().memoryBody * 400, ' '))), refused(Code::TooLarge)),
        onlyData("codingUnknown", {send(answer("200 OK", "Content-Encoding: br\r\n", "hello"))}, refusal),
        onlyData("codedTwice", {send(answer("200 OK", "Content-Encoding: gzip, gzip\r\n", gzip(packed)))}, refusal)};
}

QList<NetworkFault> redirectFaults()
{
    const auto redirect = [](const QByteArray& location) {
        return Script{send(answer("302 Found", "Location: " + location + "\r\n", ""))};
    };
    return {fault("redirectToFile", redirect("file:///etc/hostname"), refused(Code::RefusedRedirect)),
            fault("redirectToOtherScheme", redirect("ftp://127.0.0.1/x"), refused(Code::RefusedRedirect)),
            fault("redirectLoop", redirect("/again"), refused(Code::TooManyRedirects)),
            fault("redirectWithoutLocation", {send(answer("302 Found", "", ""))}, answered(302)),
            fault("redirectWithEmptyLocation", redirect(""), answered(302)),
            fault("redirectToNoHost", redirect("http:///x"), answered(302))};
}

QList<NetworkFault> headFaults()
{
    const Ending refusal = refused(Code::Transport);
    return {fault("headTooLong", {send("HTTP/1.1 200 OK\r\n"), send("X-Filler: 0123456789abcdef\r\n", 16384)}, refusal,
                  "too long"),
            fault("headLineTooLong", {send("HTTP/1.1 200 OK\r\nX: "), send(QByteArray(4096, 'x'), 128)}, refusal,
                  "too long"),
            fault("headerWithoutColon", {send("HTTP/1.1 200 OK\r\nnonsense\r\n\r\n")}, refusal, "invalid header"),
            fault("protocolChange", {send("HTTP/1.1 101 Switching\r\n\r\n")}, refusal),
            fault("endlessInterimAnswers", {send("HTTP/1.1 100 Continue\r\n\r\n", 16384)}, refusal, "too long")};
}

} // namespace

HttpClient::Limits smallLimits(std::chrono::milliseconds stallWindow)
{
    HttpClient::Limits limits;
    limits.stallWindow = stallWindow;
    limits.stallBytes = 4096;
    limits.memoryBody = 8192;
    return limits;
}

const QList<NetworkFault>& networkFaults()
{
    static const QList<NetworkFault> faults = statusFaults() + cutFaults() + slowFaults() + lengthFaults() +
                                              chunkFaults() + gzipFaults() + redirectFaults() + headFaults();
    return faults;
}

} // namespace orvane::test
