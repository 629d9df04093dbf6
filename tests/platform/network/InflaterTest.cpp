#include "platform/network/Inflater.h"

#include "platform/network/HttpClient.h"
#include "tests/platform/network/Fetch.h"
#include "tests/platform/network/Gzip.h"

#include <gmock/gmock.h>
#include <optional>

namespace orvane {
namespace {

using Code = HttpError::Code;

constexpr qint64 limit = 100'000;

struct Unpacked
{
    QByteArray bytes;
    std::optional<Code> refusal;
};

Unpacked unpack(const QByteArray& packed, qsizetype pieceSize)
{
    Unpacked result;
    Inflater inflater(limit);
    try {
        for (qsizetype at = 0; at < packed.size(); at += pieceSize)
            inflater.feed(QByteArrayView(packed).sliced(at, std::min(pieceSize, packed.size() - at)), result.bytes);
        inflater.end();
    } catch (const HttpError& error) {
        result.refusal = error.code();
    }
    return result;
}

QByteArray text()
{
    QByteArray made;
    for (int line = 0; made.size() < 90'000; ++line)
        made += "line " + QByteArray::number(line * line) + '\n';
    return made;
}

TEST(Inflater, aStreamUnpacksTheSameInPiecesOfAnySize)
{
    const QByteArray packed = test::gzip(text());
    for (const qsizetype size : {qsizetype{1}, qsizetype{7}, qsizetype{1000}, packed.size()}) {
        const Unpacked result = unpack(packed, size);
        EXPECT_EQ(result.refusal, std::nullopt);
        EXPECT_TRUE(result.bytes == text()) << "in pieces of " << size;
    }
}

TEST(Inflater, membersOneBehindTheOtherAreOneStream)
{
    const QByteArray packed = test::gzip("hello ") + test::gzip("") + test::gzip("world");
    for (const qsizetype size : {qsizetype{1}, qsizetype{5}, packed.size()})
        EXPECT_EQ(unpack(packed, size).bytes, "hello world");
}

TEST(Inflater, nothingUnpacksToNothing)
{
    EXPECT_EQ(unpack("", 1).refusal, std::nullopt);
    EXPECT_EQ(unpack(test::gzip(""), 100).bytes, "");
}

TEST(Inflater, everyCutIsNoticed)
{
    const QByteArray packed = test::gzip("hello world, hello world");
    for (qsizetype size = 1; size < packed.size(); ++size)
        EXPECT_EQ(unpack(packed.first(size), 1000).refusal, Code::Transport) << "after " << size << " bytes";
}

/// The head's time, flags and system say nothing of the text; every other byte does.
TEST(Inflater, everyChangedByteIsNoticedOrHarmless)
{
    const QByteArray plain = "hello world, hello world";
    const QByteArray packed = test::gzip(plain);
    for (qsizetype place = 0; place < packed.size(); ++place) {
        QByteArray changed = packed;
        changed[place] = static_cast<char>(changed[place] ^ 0x10);
        const Unpacked result = unpack(changed, 1000);
        EXPECT_TRUE(result.refusal == Code::Transport || result.bytes == plain) << "at " << place;
    }
}

TEST(Inflater, whatIsBehindTheStreamIsRefused)
{
    const QByteArray packed = test::gzip("hello");
    for (const QByteArray& more : {QByteArray("x"), QByteArray("\0", 1), packed.first(3)})
        EXPECT_EQ(unpack(packed + more, 1000).refusal, Code::Transport);
}

TEST(Inflater, moreThanTheLimitIsRefusedBeforeItIsUnpacked)
{
    EXPECT_EQ(unpack(test::gzip(QByteArray(limit, ' ')), 1000).refusal, std::nullopt);
    EXPECT_EQ(unpack(test::gzip(QByteArray(limit + 1, ' ')), 1000).refusal, Code::TooLarge);
    const Unpacked bomb = unpack(test::gzip(QByteArray(50'000'000, ' ')), 100'000);
    EXPECT_EQ(bomb.refusal, Code::TooLarge);
    EXPECT_LE(bomb.bytes.size(), limit);
}

} // namespace
} // namespace orvane
