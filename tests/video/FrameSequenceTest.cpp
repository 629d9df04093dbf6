#include "video/FrameSequence.h"

#include "tests/video/PlainPainter.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace orvane;
using namespace orvane::Video;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString site = u"orvane.example"_s;

Scene nightDrive()
{
    return {.artwork = test::sunset(700), .title = u"Night Drive"_s, .artist = u"synthwave · 1984 · neon"_s};
}

/// How far the picture's samples are from those of `image`, whose top left corner stands at `corner`.
double distance(VideoPicture& picture, const QImage& image, QPoint corner)
{
    const std::array<std::vector<double>, 3> expected = test::plainPlanes(image);
    const std::array<VideoPicture::Plane, 3> planes = picture.planes();
    double furthest = 0.0;
    for (std::size_t index = 0; index < planes.size(); ++index) {
        const int part = index == 0 ? 1 : 2;
        const int width = image.width() / part;
        for (int row = 0; row < image.height() / part; ++row) {
            const std::uint8_t* line = planes[index].bytes +
                                       std::ptrdiff_t(row + corner.y() / part) * planes[index].stride +
                                       corner.x() / part;
            for (int column = 0; column < width; ++column)
                furthest =
                    std::max(furthest, std::abs(line[column] - expected[index][std::size_t(row * width + column)]));
        }
    }
    return furthest;
}

class EveryAspect : public testing::TestWithParam<Look::Aspect>
{
};

TEST_P(EveryAspect, hasThePlainPaintersPixelsFor300Frames)
{
    const Look look{.aspect = GetParam()};
    const QSize whole = size(look.aspect);
    FramePainter painter(site);
    FrameSequence frames(painter, nightDrive(), look);
    const QRect bars(0, int(0.7 * whole.height()) & ~1, whole.width(), int(0.2 * whole.height()) & ~1);
    double furthest = 0.0;
    for (int frame = 0; frame < 300; ++frame) {
        const std::vector<float> spectrum = test::movingSpectrum(frame);
        const QImage plain = test::plainFrame(whole, spectrum, nightDrive(), look, site);
        VideoPicture& picture = frames.next(spectrum);
        const QRect compared = frame % 30 == 29 ? plain.rect() : bars;
        furthest = std::max(furthest, distance(picture, plain.copy(compared), compared.topLeft()));
    }
    // One of 255 between the two, and half of one that was rounded away.
    EXPECT_LE(furthest, 1.5);
}

INSTANTIATE_TEST_SUITE_P(FrameSequence, EveryAspect, testing::ValuesIn(Look::allAspects));

TEST(FrameSequence, anyNumberOfBarsHasThePlainPaintersPixels)
{
    for (const int bars : {1, 2, 7, 64, 200, 400}) {
        const Look look{.aspect = Look::Aspect::square, .bars = bars};
        FramePainter painter(site);
        FrameSequence frames(painter, {}, look);
        double furthest = 0.0;
        for (int frame = 0; frame < 12; ++frame) {
            const std::vector<float> spectrum = test::movingSpectrum(frame);
            const QImage plain = test::plainFrame({1080, 1080}, spectrum, {}, look, site);
            furthest = std::max(furthest, distance(frames.next(spectrum), plain, {}));
        }
        // Bars that share a pixel are one outline, of which the plain painter lays one part over the other.
        EXPECT_LE(furthest, bars < 300 ? 1.5 : 24.0) << bars;
    }
}

/// Whether two pictures of one size have the same samples outside `area`.
bool areAlikeOutside(const VideoPicture::Area& area, VideoPicture& left, VideoPicture& right)
{
    const auto lefts = left.planes();
    const auto rights = right.planes();
    for (std::size_t index = 0; index < lefts.size(); ++index) {
        const int part = index == 0 ? 1 : 2;
        for (int row = 0; row < left.height() / part; ++row) {
            const bool crosses = row * part >= area.top && row * part < area.top + area.height;
            const std::uint8_t* a = lefts[index].bytes + std::ptrdiff_t(row) * lefts[index].stride;
            const std::uint8_t* b = rights[index].bytes + std::ptrdiff_t(row) * rights[index].stride;
            const int end = left.width() / part;
            const int start = crosses ? area.left / part : end;
            const int resumed = crosses ? (area.left + area.width) / part : end;
            if (!std::equal(a, a + start, b) || !std::equal(a + resumed, a + end, b + resumed))
                return false;
        }
    }
    return true;
}

TEST_P(EveryAspect, tellsWhereAFrameDiffersFromTheOneBefore)
{
    const Look look{.aspect = GetParam()};
    const QSize whole = size(look.aspect);
    FramePainter painter(site);
    FrameSequence frames(painter, nightDrive(), look);
    VideoPicture before = frames.next(test::movingSpectrum(0));
    int ofBarsAlone = 0;
    for (int frame = 1; frame < 60; ++frame) {
        VideoPicture& picture = frames.next(test::movingSpectrum(frame));
        const VideoPicture::Area& changed = frames.changed();
        EXPECT_TRUE(areAlikeOutside(changed, before, picture)) << frame;
        EXPECT_LE(changed.left + changed.width, whole.width());
        EXPECT_LE(changed.top + changed.height, whole.height());
        if (changed.height < whole.height()) {
            ++ofBarsAlone;
            EXPECT_LT(changed.height, whole.height() / 5);
        }
        before = picture;
    }
    EXPECT_GT(ofBarsAlone, 0);
    EXPECT_LT(ofBarsAlone, 59);
}

TEST(FrameSequence, noBarsAreNoBars)
{
    FramePainter painter(site);
    FrameSequence frames(painter, {}, {.aspect = Look::Aspect::square, .bars = 0});
    QImage still(1080, 1080, QImage::Format_RGB32);
    {
        QPainter context(&still);
        painter.drawStill(context, still.size(), 0, {}, {.bars = 0});
    }
    EXPECT_LE(distance(frames.next(std::vector<float>(512)), still, {}), 0.51);
}

} // namespace
