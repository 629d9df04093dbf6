#include "video/Artwork.h"

#include "tests/platform/sound/Program.h"
#include "tests/support/TestFolder.h"
#include "tests/video/PlainPainter.h"

#include <QColorSpace>
#include <QPainter>

#include <gtest/gtest.h>

using namespace orvane;
using namespace orvane::Video;
using namespace Qt::Literals::StringLiterals;

namespace {

/// Eight by eight pixels of red, in four printing colours.
const QByteArray printedRed = QByteArray::fromHex(
    "ffd8ffee000e41646f626500640000000000ffdb004300080101010101010101010101010101010101010101010101010101"
    "01010101010101010101010101010101010101010101010101010101010101010101010101ffc00014080008000804011100"
    "021100031100041100ffc4001500000200000000000000000000000000000708ffc400141001000000000000000000000000"
    "00000000ffda000e040100020003000400003f003f97f2fe3fbfffd9");

class Artwork : public testing::Test
{
protected:
    QImage saved(const QImage& image, const QString& name) const
    {
        image.save(folder_.path(name));
        return readArtwork(folder_.path(name));
    }

    test::TestFolder folder_;
};

void expectColour(const QImage& image, QPoint place, QColor colour, int tolerance)
{
    const QColor found = image.pixelColor(place);
    EXPECT_NEAR(found.red(), colour.red(), tolerance);
    EXPECT_NEAR(found.green(), colour.green(), tolerance);
    EXPECT_NEAR(found.blue(), colour.blue(), tolerance);
}

TEST_F(Artwork, everyFormatThatCoversComeInIsRead)
{
    const QImage cover = test::sunset(64);
    for (const QString& name : {u"cover.png"_s, u"cover.jpg"_s, u"cover.webp"_s}) {
        const QImage read = saved(cover, name);
        ASSERT_EQ(read.size(), QSize(64, 64)) << name.toStdString();
        expectColour(read, {32, 35}, cover.pixelColor(32, 35), 24);
    }
}

TEST_F(Artwork, whatItIsGoesByItsContent)
{
    test::sunset(64).save(folder_.path(u"cover.png"_s));
    EXPECT_FALSE(readArtwork(folder_.write(u"cover.jpg"_s, folder_.read(u"cover.png"_s))).isNull());
}

TEST_F(Artwork, whatIsNoPictureIsNone)
{
    EXPECT_TRUE(readArtwork({}).isNull());
    EXPECT_TRUE(readArtwork(folder_.path(u"gone.png"_s)).isNull());
    EXPECT_TRUE(readArtwork(folder_.path()).isNull());
    EXPECT_TRUE(readArtwork(folder_.write(u"cover.png"_s, "<svg/>")).isNull());
    EXPECT_TRUE(readArtwork(folder_.write(u"empty.png"_s, {})).isNull());
}

TEST_F(Artwork, tenThousandPixelsWideIsReadAndFillsItsSquare)
{
    QImage wide(10'000, 500, QImage::Format_RGB32);
    wide.fill(Qt::blue);
    QPainter(&wide).fillRect(4'750, 0, 500, 500, Qt::yellow);
    const QImage filled = filling(saved(wide, u"wide.png"_s), {562, 562});
    ASSERT_EQ(filled.size(), QSize(562, 562));
    expectColour(filled, {4, 281}, Qt::yellow, 3);
    expectColour(filled, {557, 281}, Qt::yellow, 3);
}

TEST_F(Artwork, whatWouldFillTheMemoryIsNone)
{
    // A header that promises 60,000 by 60,000 pixels.
    QImage(16, 16, QImage::Format_Grayscale8).save(folder_.path(u"small.png"_s));
    QByteArray bytes = folder_.read(u"small.png"_s);
    bytes.replace(16, 8, QByteArray::fromHex("0000ea600000ea60"));
    EXPECT_TRUE(readArtwork(folder_.write(u"huge.png"_s, bytes)).isNull());
}

TEST_F(Artwork, onePixelFillsTheSquare)
{
    QImage pixel(1, 1, QImage::Format_RGB32);
    pixel.fill(Qt::green);
    const QImage filled = filling(saved(pixel, u"pixel.png"_s), {562, 562});
    ASSERT_EQ(filled.size(), QSize(562, 562));
    expectColour(filled, {0, 0}, Qt::green, 0);
    expectColour(filled, {561, 561}, Qt::green, 0);
}

TEST_F(Artwork, printingColoursBecomeThoseOfTheScreen)
{
    const QImage read = readArtwork(folder_.write(u"cover.jpg"_s, printedRed));
    ASSERT_EQ(read.size(), QSize(8, 8));
    expectColour(read, {4, 4}, Qt::red, 4);
}

TEST_F(Artwork, ofAnAnimationTheFirstPictureIsTaken)
{
    const QString path = folder_.path(u"cover.gif"_s);
    ASSERT_EQ(test::run(u"ffmpeg"_s,
                        {u"-v"_s, u"error"_s, u"-f"_s, u"lavfi"_s, u"-i"_s, u"color=red:s=32x32:r=2:d=1"_s, u"-f"_s,
                         u"lavfi"_s, u"-i"_s, u"color=blue:s=32x32:r=2:d=1"_s, u"-filter_complex"_s, u"concat"_s, path})
                  .exitCode,
              0);
    const QImage read = readArtwork(path);
    ASSERT_EQ(read.size(), QSize(32, 32));
    expectColour(read, {16, 16}, Qt::red, 8);
}

TEST_F(Artwork, otherColourSpacesBecomeTheScreens)
{
    QImage wide(8, 8, QImage::Format_RGB32);
    wide.fill(QColor(200, 40, 40));
    wide.setColorSpace(QColorSpace::AdobeRgb);
    const QImage read = saved(wide, u"cover.png"_s);
    EXPECT_GT(read.pixelColor(4, 4).red(), 220);
}

TEST_F(Artwork, transparencyStays)
{
    QImage clear(8, 8, QImage::Format_ARGB32);
    clear.fill(Qt::transparent);
    EXPECT_EQ(qAlpha(saved(clear, u"cover.png"_s).pixel(4, 4)), 0);
}

} // namespace
