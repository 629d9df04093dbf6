#include "video/FramePainter.h"

#include "tests/video/PlainPainter.h"

#include <cmath>
#include <gmock/gmock.h>

using namespace orvane;
using namespace orvane::Video;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString site = u"orvane.example"_s;

class Frame : public testing::Test
{
protected:
    QImage painted(const Scene& scene, const Look& look, std::span<const float> spectrum)
    {
        QImage image(size(look.aspect), QImage::Format_RGB32);
        image.fill(Qt::magenta);
        QPainter context(&image);
        painter_.drawFrame(context, image.size(), spectrum, scene, look);
        return image;
    }

    QImage silent(const Scene& scene, const Look& look = {}) { return painted(scene, look, silence_); }

    FramePainter painter_{site};
    std::vector<float> silence_ = std::vector<float>(512);
    std::vector<float> full_ = std::vector<float>(512, 1.0F);
};

/// Whether two frames are the same in the rows from `top` to before `end`.
bool areSame(const QImage& one, const QImage& other, int top, int end)
{
    const QRect rows(0, top, one.width(), end - top);
    return one.copy(rows) == other.copy(rows);
}

QRgb glowAt(double alpha, double part)
{
    const double left = alpha * (1.0 - part);
    const auto mixed = [&](int below, int above) {
        return int(std::lround(below * (1.0 - left) + above * (1.0 - part) * left));
    };
    return qRgb(mixed(8, 242), mixed(9, 102), mixed(14, 34));
}

void expectNear(QRgb pixel, QRgb expected, int tolerance = 1)
{
    EXPECT_NEAR(qRed(pixel), qRed(expected), tolerance);
    EXPECT_NEAR(qGreen(pixel), qGreen(expected), tolerance);
    EXPECT_NEAR(qBlue(pixel), qBlue(expected), tolerance);
}

TEST(Aspect, hasItsTextAndItsSize)
{
    EXPECT_EQ(rawValue(Look::Aspect::portrait), u"9:16");
    EXPECT_EQ(rawValue(Look::Aspect::square), u"1:1");
    EXPECT_EQ(rawValue(Look::Aspect::landscape), u"16:9");
    EXPECT_EQ(size(Look::Aspect::portrait), QSize(1080, 1920));
    EXPECT_EQ(size(Look::Aspect::square), QSize(1080, 1080));
    EXPECT_EQ(size(Look::Aspect::landscape), QSize(1920, 1080));
}

TEST(Aspect, aMissingOrUnknownTextMeansPortrait)
{
    for (const Look::Aspect aspect : Look::allAspects)
        EXPECT_EQ(aspectNamed(rawValue(aspect)), aspect);
    EXPECT_EQ(aspectNamed({}), Look::Aspect::portrait);
    EXPECT_EQ(aspectNamed(u"4:3"_s), Look::Aspect::portrait);
}

TEST_F(Frame, aSilentTrackGivesTheDarkestBackdropAndARowOfDots)
{
    const QImage image = silent({}, {.showArtwork = false});
    expectNear(image.pixel(540, 1344), glowAt(0.1, 0.0));
    expectNear(image.pixel(540, 1344 - 459), glowAt(0.1, 0.5));
    expectNear(image.pixel(0, 0), qRgb(8, 9, 14));
    // A dot is 10.8 pixels high on the base at 1689.6, and wholly deep red in its middle.
    expectNear(image.pixel(93, 1684), qRgb(176, 2, 45), 3);
    EXPECT_LT(qRed(image.pixel(93, 1676)), 60);
}

TEST_F(Frame, anEnergyOf1GivesTheBrightestBackdropAndFullBars)
{
    EXPECT_EQ(FramePainter::levelOf(full_), 7);
    const QImage image = painted({}, {.showArtwork = false}, full_);
    expectNear(image.pixel(540, 1300), glowAt(0.4, 44.0 / 918.0), 2);
    // The bar's top, the middle and the base of the gradient.
    expectNear(image.pixel(93, 1390), qRgb(254, 120, 24), 3);
    expectNear(image.pixel(93, 1536), qRgb(215, 61, 35), 3);
    expectNear(image.pixel(93, 1680), qRgb(178, 4, 44), 3);
}

TEST_F(Frame, theGlowStepsThroughEightLevels)
{
    std::vector<float> spectrum(512);
    for (int step = 0; step < 16; ++step) {
        std::fill(spectrum.begin(), spectrum.end(), (float(step) + 0.5F) / 16.0F);
        EXPECT_EQ(FramePainter::levelOf(spectrum), step / 2);
    }
    EXPECT_EQ(FramePainter::levelOf({}), 0);
}

TEST_F(Frame, aShortBarShowsTheDeepRedOnly)
{
    std::vector<float> quarter(512, 0.25F);
    const QImage image = painted({}, {}, quarter);
    for (int row = 1615; row < 1689; ++row) {
        const QRgb pixel = image.pixel(93, row);
        EXPECT_TRUE(qRed(pixel) < 150 || qGreen(pixel) < 40) << row;
    }
}

TEST_F(Frame, withAnEmptyArtistOnlyTheTitleIsPaintedAndNothingMovesUp)
{
    const QImage both = silent({.title = u"Night Drive"_s, .artist = u"synthwave"_s});
    const QImage titleOnly = silent({.title = u"Night Drive"_s});
    const QImage neither = silent({});
    // The title's baseline is at 1027.2, the artist's at 1104.
    EXPECT_TRUE(areSame(both, titleOnly, 0, 1050));
    EXPECT_TRUE(areSame(titleOnly, neither, 1050, 1920));
    EXPECT_FALSE(areSame(both, titleOnly, 1060, 1120));
    EXPECT_FALSE(areSame(titleOnly, neither, 970, 1050));
}

TEST_F(Frame, withoutArtworkShownTheSquareIsEmptyAndTheTextStaysWhereItWas)
{
    const Scene scene{.artwork = test::sunset(600), .title = u"Night Drive"_s, .artist = u"synthwave"_s};
    const QImage with = silent(scene);
    const QImage without = silent(scene, {.showArtwork = false});
    EXPECT_TRUE(areSame(without, silent({}, {.showArtwork = false}), 0, 940));
    EXPECT_TRUE(areSame(with, without, 940, 1920));
    EXPECT_FALSE(areSame(with, without, 360, 920));
}

TEST_F(Frame, withNoArtworkTheDarkPlaceholderIsPaintedWithItsHairline)
{
    const QImage image = silent({});
    expectNear(image.pixel(540, 640), qRgb(17, 20, 30));
    // The square's left edge is at 259.2; the line is two pixels wide, white at a tenth.
    const QRgb edge = image.pixel(259, 640);
    EXPECT_GT(qBlue(edge), 32);
    EXPECT_LT(qBlue(edge), 60);
    expectNear(image.pixel(250, 640), silent({}, {.showArtwork = false}).pixel(250, 640), 0);
}

TEST_F(Frame, theArtworkLiesInItsSquareAndReachesOutOfTheWiderFrames)
{
    QImage red(100, 100, QImage::Format_RGB32);
    red.fill(Qt::red);
    const QImage portrait = silent({.artwork = red});
    expectNear(portrait.pixel(540, 365), qRgb(255, 0, 0));
    expectNear(portrait.pixel(540, 915), qRgb(255, 0, 0));
    EXPECT_LT(qRed(portrait.pixel(540, 925)), 60);
    EXPECT_LT(qRed(portrait.pixel(262, 363)), 60) << "the corner is round";
    const QImage landscape = silent({.artwork = red}, {.aspect = Look::Aspect::landscape});
    expectNear(landscape.pixel(960, 0), qRgb(255, 0, 0));
    expectNear(landscape.pixel(682, 300), qRgb(255, 0, 0), 26);
    EXPECT_LT(qRed(landscape.pixel(676, 300)), 60);
}

TEST_F(Frame, aSourceThatIsNoSquareIsCroppedToItsCentre)
{
    QImage flag(300, 100, QImage::Format_RGB32);
    flag.fill(Qt::blue);
    QPainter(&flag).fillRect(100, 0, 100, 100, Qt::green);
    const QImage scaled = painter_.scaledArtwork(flag, {200, 200});
    ASSERT_EQ(scaled.size(), QSize(200, 200));
    for (const QPoint place : {QPoint(3, 3), QPoint(196, 3), QPoint(100, 100), QPoint(3, 196), QPoint(196, 196)})
        expectNear(scaled.pixel(place), qRgb(0, 255, 0), 3);
    const QImage tall = painter_.scaledArtwork(flag.transformed(QTransform().rotate(90)), {200, 200});
    expectNear(tall.pixel(100, 3), qRgb(0, 255, 0), 3);
}

TEST_F(Frame, theScaledArtworkIsKeptForTheSameSourceAndSize)
{
    const QImage source = test::sunset(300);
    const QImage first = painter_.scaledArtwork(source, {200, 200});
    EXPECT_EQ(painter_.scaledArtwork(source, {200, 200}).cacheKey(), first.cacheKey());
    EXPECT_NE(painter_.scaledArtwork(test::sunset(300), {200, 200}).cacheKey(), first.cacheKey());
    EXPECT_EQ(painter_.scaledArtwork(source, {100, 100}).size(), QSize(100, 100));
    EXPECT_TRUE(painter_.scaledArtwork({}, {200, 200}).isNull());
}

TEST_F(Frame, theWordmarkIsThereWithAndWithoutThePill)
{
    const QImage with = silent({});
    const QImage without = silent({}, {.showWatermark = false});
    // The pill reaches from 4.5 to 7.5 hundredths of the height; the mark stands at 5.5.
    EXPECT_TRUE(areSame(with, without, 0, 1774));
    EXPECT_FALSE(areSame(with, without, 1776, 1834));
    int bright = 0;
    for (int column = 480; column < 600; ++column)
        bright += qRed(without.pixel(column, 1806)) > 60 ? 1 : 0;
    EXPECT_GT(bright, 20);
}

TEST_F(Frame, everyAspectIsThePlainPaintersPictureWithTextInAllScripts)
{
    const QStringList titles{u"Night Drive"_s, u"夜に駆ける"_s, u"ليلة طويلة"_s, u"सपनों की रात"_s, u"🌌🎵"_s};
    for (const Look::Aspect aspect : Look::allAspects) {
        for (const QString& title : titles) {
            const Scene scene{.artwork = test::sunset(700), .title = title, .artist = title};
            const std::vector<float> spectrum = test::movingSpectrum(17);
            const QImage ours = painted(scene, {.aspect = aspect}, spectrum);
            const QImage plain = test::plainFrame(size(aspect), spectrum, scene, {.aspect = aspect}, site);
            int furthest = 0;
            for (int row = 0; row < ours.height(); ++row) {
                for (int column = 0; column < ours.width(); ++column) {
                    const QRgb one = ours.pixel(column, row);
                    const QRgb other = plain.pixel(column, row);
                    furthest = std::max({furthest, std::abs(qRed(one) - qRed(other)),
                                         std::abs(qGreen(one) - qGreen(other)), std::abs(qBlue(one) - qBlue(other))});
                }
            }
            EXPECT_LE(furthest, 1) << title.toStdString() << " at " << rawValue(aspect).toStdString();
        }
    }
}

} // namespace
