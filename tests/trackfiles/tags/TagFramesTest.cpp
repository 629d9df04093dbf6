#include "trackfiles/tags/Tags.h"

#include <QSet>

#include <algorithm>
#include <gtest/gtest.h>

namespace orvane {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr qsizetype headerBytes = 10;
constexpr qsizetype paddingBytes = 512;

const Tags::Metadata nothing{.title = {}, .artist = {}};

/// The frames of a built tag, without header and padding.
QByteArray framesOf(const Tags::Metadata& metadata)
{
    const QByteArray tag = Tags::build(metadata);
    return tag.sliced(headerBytes, tag.size() - headerBytes - paddingBytes);
}

QByteArray bytes(std::initializer_list<int> values)
{
    QByteArray result;
    for (const int value : values)
        result.append(static_cast<char>(value));
    return result;
}

TEST(TagFrames, withTitleAndArtistBothEmptyTheTagIsAHeaderAnd512BytesOfPadding)
{
    EXPECT_EQ(Tags::build(nothing), QByteArray("ID3") + bytes({4, 0, 0, 0x00, 0x00, 0x04, 0x00}) + QByteArray(512, 0));
}

TEST(TagFrames, aTitleBeyondAsciiIsStoredAsUtf8UnderEncodingByte3AndItsSizeCountsBytesNotCharacters)
{
    EXPECT_EQ(framesOf({.title = u"Öl"_s, .artist = {}}),
              QByteArray("TIT2") + bytes({0, 0, 0, 5, 0, 0, 0x03, 0xC3, 0x96, 'l', 0}));
    const QByteArray astronaut = framesOf({.title = u"👩‍🚀"_s, .artist = {}});
    EXPECT_EQ(Tags::readSynchsafe(QByteArrayView(astronaut).sliced(4, 4)), 11 + 2);
}

TEST(TagFrames, noValueIsTrimmed)
{
    EXPECT_EQ(framesOf({.title = {}, .artist = u" \n"_s}),
              QByteArray("TPE1") + bytes({0, 0, 0, 4, 0, 0, 3, ' ', '\n', 0}));
}

TEST(TagFrames, aGenreIsPlainTextAndNeverANumber)
{
    EXPECT_EQ(framesOf({.title = {}, .artist = {}, .genre = u"Rock"_s}),
              QByteArray("TCON") + bytes({0, 0, 0, 6, 0, 0, 3}) + "Rock" + bytes({0}));
}

TEST(TagFrames, theArtistIsSunoAIUnlessItIsSaid)
{
    EXPECT_EQ(framesOf({.title = {}}), QByteArray("TPE1") + bytes({0, 0, 0, 9, 0, 0, 3}) + "Suno AI" + bytes({0}));
}

TEST(TagFrames, framesStandInOneOrderOnly)
{
    const QByteArray frames = framesOf({.title = u"t"_s,
                                        .artist = u"a"_s,
                                        .album = u"l"_s,
                                        .genre = u"g"_s,
                                        .trackNumber = 1,
                                        .lyrics = u"w"_s,
                                        .artwork = QByteArray("p")});
    QList<qsizetype> places;
    for (const char* id : {"TIT2", "TPE1", "TALB", "TCON", "TRCK", "USLT", "APIC"})
        places.append(frames.indexOf(id));
    EXPECT_GE(places.first(), 0);
    EXPECT_TRUE(std::is_sorted(places.begin(), places.end()));
    EXPECT_EQ(QSet<qsizetype>(places.begin(), places.end()).size(), 7);
}

TEST(TagFrames, trackNumber3WithTrackTotal12GivesThreeOfTwelve)
{
    EXPECT_EQ(framesOf({.title = {}, .artist = {}, .trackNumber = 3, .trackTotal = 12}),
              QByteArray("TRCK") + bytes({0, 0, 0, 6, 0, 0, 3}) + "3/12" + bytes({0}));
    EXPECT_EQ(framesOf({.title = {}, .artist = {}, .trackNumber = 3}),
              QByteArray("TRCK") + bytes({0, 0, 0, 3, 0, 0, 3}) + "3" + bytes({0}));
}

TEST(TagFrames, trackTotalAloneGivesNoTrck)
{
    EXPECT_EQ(framesOf({.title = {}, .artist = {}, .trackTotal = 12}), QByteArray());
}

TEST(TagFrames, lyricsAreEnglishWithAnEmptyDescription)
{
    EXPECT_EQ(framesOf({.title = {}, .artist = {}, .lyrics = u"la\r\nla"_s}),
              QByteArray("USLT") + bytes({0, 0, 0, 12, 0, 0, 3}) + "eng" + bytes({0}) + "la\r\nla" + bytes({0}));
}

TEST(TagFrames, lyricsOfNothingAndAbsentLyricsGiveTheSameTag)
{
    EXPECT_EQ(Tags::build({.title = u"t"_s, .lyrics = u""_s}), Tags::build({.title = u"t"_s}));
}

TEST(TagFrames, emptyArtworkAndAbsentArtworkGiveTheSameTag)
{
    EXPECT_EQ(Tags::build({.title = u"t"_s, .artwork = QByteArray()}), Tags::build({.title = u"t"_s}));
}

TEST(TagFrames, aPictureIsAFrontCoverWithItsMimeTypeAndItsBytesUnchanged)
{
    const QByteArray picture = bytes({0xFF, 0xD8, 0x00, 0xFF, 0xE0});
    EXPECT_EQ(framesOf({.title = {}, .artist = {}, .artwork = picture, .artworkMime = u"image/png"_s}),
              QByteArray("APIC") + bytes({0, 0, 0, 18, 0, 0, 3}) + "image/png" + bytes({0, 3, 0}) + picture.first(5));
}

TEST(TagFrames, sizesUseSevenBitsOfEachByte)
{
    using Four = std::array<std::uint8_t, 4>;
    EXPECT_EQ(Tags::synchsafe(0), (Four{0, 0, 0, 0}));
    EXPECT_EQ(Tags::synchsafe(127), (Four{0, 0, 0, 127}));
    EXPECT_EQ(Tags::synchsafe(128), (Four{0, 0, 1, 0}));
    EXPECT_EQ(Tags::synchsafe(16383), (Four{0, 0, 127, 127}));
    EXPECT_EQ(Tags::synchsafe(16384), (Four{0, 1, 0, 0}));
    EXPECT_EQ(Tags::synchsafe(2097151), (Four{0, 127, 127, 127}));
    EXPECT_EQ(Tags::synchsafe(2097152), (Four{1, 0, 0, 0}));
    EXPECT_EQ(Tags::synchsafe((1 << 28) - 1), (Four{127, 127, 127, 127}));
}

TEST(TagFrames, bitsAboveTwentyEightAreDropped)
{
    EXPECT_EQ(Tags::synchsafe((1LL << 28) + 5), Tags::synchsafe(5));
}

TEST(TagFrames, aSizeReadsBackAndTheHighBitOfABytesIsNotLookedAt)
{
    for (const qint64 value : {0, 1, 127, 128, 16383, 16384, 2097151, 2097152, (1 << 28) - 1}) {
        QByteArray written;
        for (const std::uint8_t byte : Tags::synchsafe(value))
            written.append(static_cast<char>(byte));
        EXPECT_EQ(Tags::readSynchsafe(written), value);
        for (char& byte : written)
            byte = static_cast<char>(byte | 0x80);
        EXPECT_EQ(Tags::readSynchsafe(written), value);
    }
    EXPECT_EQ(Tags::readSynchsafe({}), 0);
}

QByteArray tagHeader(int flags, int size)
{
    QByteArray header = QByteArray("ID3") + bytes({4, 0, flags});
    for (const std::uint8_t byte : Tags::synchsafe(size))
        header.append(static_cast<char>(byte));
    return header;
}

TEST(AudioOffset, aBareHeaderOfTenBytesIsNoTag)
{
    EXPECT_EQ(Tags::audioOffset(tagHeader(0, 0)), 0);
    EXPECT_EQ(Tags::audioOffset(tagHeader(0, 0) + "x"), 10);
}

TEST(AudioOffset, dataWithoutATagHasItsAudioAtTheStart)
{
    EXPECT_EQ(Tags::audioOffset(bytes({0xFF, 0xFB, 0x90, 0, 0, 0, 0, 0, 0, 0, 0, 0})), 0);
    EXPECT_EQ(Tags::audioOffset({}), 0);
}

TEST(AudioOffset, theVersionIsNotLookedAt)
{
    QByteArray data = tagHeader(0, 5) + QByteArray(20, 'x');
    data[3] = 77;
    EXPECT_EQ(Tags::audioOffset(data), 15);
}

TEST(AudioOffset, aFileWithAFooterFlagIsCut10BytesFurtherOnThanOneWithout)
{
    const QByteArray rest(100, 'x');
    EXPECT_EQ(Tags::audioOffset(tagHeader(0x10, 40) + rest) - Tags::audioOffset(tagHeader(0x00, 40) + rest), 10);
    EXPECT_EQ(Tags::audioOffset(tagHeader(0xEF, 40) + rest), 50);
}

TEST(AudioOffset, aStatedSizePastTheEndGivesTheLength)
{
    EXPECT_EQ(Tags::audioOffset(tagHeader(0, 5000) + "abc"), 13);
}

TEST(AudioOffset, theHeadOfAFileSuffices)
{
    const QByteArray head = tagHeader(0, 5000) + "abcdef";
    EXPECT_EQ(Tags::audioOffset(head, 1'000'000), 5010);
    EXPECT_EQ(Tags::audioOffset(head, 100), 100);
    EXPECT_EQ(Tags::audioOffset(head.first(10), 1'000'000), 0);
}

TEST(SynchsafeDeathTest, aNegativeSizeStopsTheProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(Tags::synchsafe(-1), "A size is never negative");
}

} // namespace
} // namespace orvane
