#include "platform/network/HttpClient.h"
#include "platform/network/ResponseParser.h"

#include <QByteArray>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>

namespace {

using orvane::HttpError;
using orvane::ResponseHead;
using orvane::ResponseParser;

struct Reading
{
    int heads = 0;
    QByteArray body;
    bool whole = false;
    QString refusal;

    bool operator==(const Reading&) const = default;
};

Reading read(QByteArrayView bytes, qsizetype pieceSize)
{
    Reading reading;
    std::optional<qint64> announced;
    ResponseParser parser;
    parser.onHead = [&](const ResponseHead& head) {
        ++reading.heads;
        announced = head.contentLength;
    };
    parser.onBody = [&reading](QByteArrayView piece) { reading.body += piece; };
    try {
        for (qsizetype at = 0; at < bytes.size(); at += pieceSize)
            parser.feed(bytes.sliced(at, std::min(pieceSize, bytes.size() - at)));
        parser.end();
        reading.whole = true;
    } catch (const HttpError& error) {
        reading.refusal = error.sentence();
    }
    if (reading.whole && announced && *announced != reading.body.size())
        std::abort();
    return reading;
}

} // namespace

/// The first byte is the size of the pieces. However the bytes are cut, they mean the same, and what is called whole
/// has the size it announced.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const QByteArrayView answer(data + 1, static_cast<qsizetype>(size - 1));
    const Reading pieces = read(answer, data[0] + 1);
    const Reading whole = read(answer, std::max<qsizetype>(answer.size(), 1));
    if (pieces != whole)
        std::abort();
    return 0;
}
