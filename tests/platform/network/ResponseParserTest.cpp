#include "platform/network/ResponseParser.h"

#include "tests/platform/network/Fetch.h"

#include <gmock/gmock.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// What a parser made of some bytes.
struct Reading
{
    ResponseHead head;
    int heads = 0;
    QByteArray body;
    bool done = false;
    QString refusal;
};

/// Feeds `bytes` in pieces of `pieceSize` and, if `closes`, ends the connection behind them.
Reading read(const QByteArray& bytes, qsizetype pieceSize, bool closes)
{
    Reading reading;
    ResponseParser parser;
    parser.onHead = [&reading](const ResponseHead& head) {
        reading.head = head;
        ++reading.heads;
    };
    parser.onBody = [&reading](QByteArrayView piece) { reading.body += piece; };
    try {
        for (qsizetype at = 0; at < bytes.size(); at += pieceSize)
            parser.feed(QByteArrayView(bytes).sliced(at, std::min(pieceSize, bytes.size() - at)));
        if (closes)
            parser.end();
    } catch (const HttpError& error) {
        EXPECT_EQ(error.code(), HttpError::Code::Transport);
        reading.refusal = error.sentence();
    }
    reading.done = parser.isDone();
    return reading;
}

/// The same in pieces of every size: they must not matter.
Reading readInAnyPieces(const QByteArray& bytes, bool closes = false)
{
    const Reading whole = read(bytes, bytes.size(), closes);
    for (qsizetype size = 1; size < bytes.size(); ++size) {
        const Reading pieces = read(bytes, size, closes);
        EXPECT_EQ(pieces.body, whole.body) << "in pieces of " << size;
        EXPECT_EQ(pieces.heads, whole.heads) << "in pieces of " << size;
        EXPECT_EQ(pieces.done, whole.done) << "in pieces of " << size;
        EXPECT_EQ(pieces.refusal, whole.refusal) << "in pieces of " << size;
    }
    return whole;
}

TEST(ResponseParser, aMeasuredBodyEndsWithItsLastByte)
{
    const Reading reading = readInAnyPieces("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhello");
    EXPECT_TRUE(reading.done);
    EXPECT_EQ(reading.body, "hello");
    EXPECT_EQ(reading.head.status, 200);
    EXPECT_EQ(reading.head.contentLength, 5);
    EXPECT_TRUE(reading.head.keepAlive);
}

TEST(ResponseParser, aMeasuredBodyIsNotWholeBeforeItsLastByte)
{
    EXPECT_FALSE(readInAnyPieces("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhell").done);
    EXPECT_EQ(readInAnyPieces("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhell", true).refusal,
              u"truncated transfer (4 of 5 bytes)");
}

TEST(ResponseParser, chunksAreJoinedAndTheirExtensionsAndTrailersPassedOver)
{
    const Reading reading = readInAnyPieces("HTTP/1.1 200 OK\r\nTransfer-Encoding: Chunked\r\nContent-Length: 3\r\n\r\n"
                                            "5;a=b\r\nhello\r\nA \r\n0123456789\r\n000\r\nX: y\r\n\r\n");
    EXPECT_TRUE(reading.done);
    EXPECT_EQ(reading.body, "hello0123456789");
    EXPECT_EQ(reading.head.contentLength, std::nullopt);
    EXPECT_TRUE(reading.head.chunked);
}

TEST(ResponseParser, aBodyWithoutFramingEndsWithTheConnection)
{
    EXPECT_FALSE(readInAnyPieces("HTTP/1.1 200 OK\r\n\r\nhello").done);
    const Reading reading = readInAnyPieces("HTTP/1.1 200 OK\r\n\r\nhello", true);
    EXPECT_TRUE(reading.done);
    EXPECT_EQ(reading.body, "hello");
    EXPECT_FALSE(reading.head.keepAlive);
}

TEST(ResponseParser, answersThatHaveNoBodyEndWithTheirHead)
{
    for (const QByteArray status : {"204 No Content", "304 Not Modified"}) {
        const Reading reading = readInAnyPieces("HTTP/1.1 " + status + "\r\nContent-Length: 5\r\n\r\n");
        EXPECT_TRUE(reading.done) << status.constData();
        EXPECT_EQ(reading.head.contentLength, std::nullopt);
    }
    EXPECT_TRUE(readInAnyPieces("HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n").done);
}

TEST(ResponseParser, interimAnswersArePassedOver)
{
    const Reading reading = readInAnyPieces("HTTP/1.1 100 Continue\r\nX: y\r\n\r\nHTTP/1.1 103 Early Hints\r\n\r\n"
                                            "HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n");
    EXPECT_EQ(reading.heads, 1);
    EXPECT_EQ(reading.head.status, 404);
    EXPECT_EQ(reading.head.headers.size(), 1);
}

TEST(ResponseParser, headersAreTrimmedAndFoldedLinesJoined)
{
    const Reading reading =
        readInAnyPieces("HTTP/1.1 200\nA:  one \t\r\nB:\r\n two\r\n\tthree\r\nContent-Length: 0\r\n\r\n");
    ASSERT_EQ(reading.head.headers.size(), 3);
    EXPECT_EQ(reading.head.header("a"), "one");
    EXPECT_EQ(reading.head.header("b"), " two three");
}

TEST(ResponseParser, aConnectionStaysOpenWhereBothSidesSaySo)
{
    const auto keeps = [](const QByteArray& start, const QByteArray& headerLine) {
        return readInAnyPieces(start + " 200 OK\r\n" + headerLine + "Content-Length: 0\r\n\r\n").head.keepAlive;
    };
    EXPECT_TRUE(keeps("HTTP/1.1", ""));
    EXPECT_FALSE(keeps("HTTP/1.1", "Connection: x, Close\r\n"));
    EXPECT_FALSE(keeps("HTTP/1.0", ""));
    EXPECT_TRUE(keeps("HTTP/1.0", "Connection: keep-alive\r\n"));
}

TEST(ResponseParser, whatIsNotHttpIsRefusedAtItsFirstOddByte)
{
    for (const QByteArray start :
         {"x", "HTTQ", "HTTP/2", "ICY 200 OK\r\n", "\r\n", "HTTP/1.1 2x0 OK\r\n", "HTTP/1.1 20\r\n",
          "HTTP/1.x 200 OK\r\n", "HTTP/1.1 2000 OK\r\n", "HTTP/1.1  200\r\n"})
        EXPECT_EQ(readInAnyPieces(start).refusal, u"the answer is not HTTP") << start.constData();
}

TEST(ResponseParser, whatComesBehindTheBodyIsRefused)
{
    EXPECT_EQ(readInAnyPieces("HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nhello").refusal,
              u"the answer is longer than announced");
    EXPECT_EQ(readInAnyPieces("HTTP/1.1 204 No Content\r\n\r\nhello").refusal, u"the answer is longer than announced");
}

TEST(ResponseParser, aChunkSizeIsAFewHexadecimalDigits)
{
    const auto refusalOf = [](const QByteArray& size) {
        return readInAnyPieces("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" + size + "\r\n").refusal;
    };
    for (const QByteArray size : {"", "x", "-1", "+1", "0x1", " 1", "1 1", "1000000000000000", "ffffffffffffffff"})
        EXPECT_EQ(refusalOf(size), u"invalid chunk size after 0 bytes") << size.constData();
    for (const QByteArray size : {"1", "00001", "fF", "fffffffffffffff", "1 ; x"})
        EXPECT_EQ(refusalOf(size), u"") << size.constData();
}

TEST(ResponseParser, anEndWithinTheFramingIsRefused)
{
    const QByteArray whole = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n0\r\n\r\n";
    for (qsizetype size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(read(whole.first(size), 7, true).refusal.isEmpty()) << "after " << size << " bytes";
    EXPECT_TRUE(read(whole, 7, true).refusal.isEmpty());
}

TEST(ResponseParser, nothingIsCalledAfterTheReaderOfTheHeadThrew)
{
    ResponseParser parser;
    parser.onHead = [](const ResponseHead&) { throw HttpError(HttpError::Code::TooLarge, u"too large"_s); };
    parser.onBody = [](QByteArrayView) { FAIL(); };
    EXPECT_THROW(parser.feed("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhello"), HttpError);
}

} // namespace
} // namespace orvane
