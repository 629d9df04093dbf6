#include "platform/video/VideoFile.h"
#include "tests/platform/sound/Program.h"
#include "tests/support/TestFolder.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>

using namespace orvane;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int width = 200;
constexpr int height = 120;
constexpr int frames = 90;

/// Sides and corners anywhere, the picture's own edges among them.
VideoPicture::Area anyArea(std::mt19937& random)
{
    const auto below = [&random](int end) { return int(std::uniform_int_distribution(0, end - 1)(random)); };
    VideoPicture::Area area{.left = below(width / 2) * 2, .top = below(height / 2) * 2};
    area.width = 2 + 2 * below((width - area.left) / 2);
    area.height = 2 + 2 * below((height - area.top) / 2);
    return area;
}

/// Fills an area with one brightness, far from what may have been there.
void paint(VideoPicture& picture, const VideoPicture::Area& area, std::uint8_t brightness)
{
    const VideoPicture::Plane luma = picture.planes().front();
    for (int row = area.top; row < area.top + area.height; ++row)
        std::fill_n(luma.bytes + std::ptrdiff_t(row) * luma.stride + area.left, area.width, brightness);
}

/// Everything that a picture shows in grey.
QByteArray greyOf(VideoPicture& picture)
{
    const VideoPicture::Plane luma = picture.planes().front();
    QByteArray grey;
    for (int row = 0; row < height; ++row)
        grey.append(reinterpret_cast<const char*>(luma.bytes) + std::ptrdiff_t(row) * luma.stride, width);
    return grey;
}

/// Bits of the pictures of a video of noise, at a bit rate.
double bitsOfNoise(qint64 bitRate)
{
    const test::TestFolder folder;
    const QString path = folder.path(u"video.mp4"_s);
    VideoFile file(path, folder.path(u".video.mp4.new"_s), {.width = width, .height = height, .bitRate = bitRate});
    file.markAsFinished(VideoFile::Track::Sound);
    VideoPicture picture(width, height);
    std::mt19937 random(3);
    for (int frame = 0; frame < 900; ++frame) {
        const VideoPicture::Plane luma = picture.planes().front();
        std::generate_n(luma.bytes, std::ptrdiff_t(luma.stride) * height, [&] { return std::uint8_t(random()); });
        EXPECT_TRUE(file.append(picture, picture.area()));
    }
    file.markAsFinished(VideoFile::Track::Picture);
    file.finish();
    return double(folder.read(u"video.mp4"_s).size()) * 8.0;
}

TEST(PictureEncoder, quantizersFromTheFinestToTheCoarsestAreTakenAsTold)
{
    // Noise that fills the picture takes 4 Mbit/s with quantizers around 20, and 300 kbit/s with those around 45.
    for (const qint64 bitRate : {4'000'000, 300'000})
        EXPECT_NEAR(bitsOfNoise(bitRate) / (30.0 * double(bitRate)), 1.0, 0.15) << bitRate;
}

TEST(PictureEncoder, whatChangesIsSeenAtOnceWhereverItIs)
{
    const test::TestFolder folder;
    const QString path = folder.path(u"video.mp4"_s);
    QByteArray shown;
    {
        VideoFile file(path, folder.path(u".video.mp4.new"_s),
                       {.width = width, .height = height, .bitRate = 20'000'000, .channelCount = 1});
        file.markAsFinished(VideoFile::Track::Sound);
        VideoPicture picture(width, height);
        std::mt19937 random(8);
        for (int frame = 0; frame < frames; ++frame) {
            const VideoPicture::Area area = anyArea(random);
            paint(picture, area, frame % 2 == 0 ? 200 : 40);
            shown += greyOf(picture);
            ASSERT_TRUE(file.append(picture, area));
        }
        file.markAsFinished(VideoFile::Track::Picture);
        file.finish();
    }
    const QString decoded = folder.path(u"decoded.y"_s);
    ASSERT_EQ(test::run(u"ffmpeg"_s, {u"-v"_s, u"error"_s, u"-i"_s, path, u"-vf"_s, u"extractplanes=y"_s, u"-f"_s,
                                      u"rawvideo"_s, decoded})
                  .exitCode,
              0);
    const QByteArray seen = folder.read(u"decoded.y"_s);
    ASSERT_EQ(seen.size(), shown.size());
    int furthest = 0;
    for (qsizetype index = 0; index < seen.size(); ++index)
        furthest = std::max(furthest, std::abs(int(std::uint8_t(seen[index])) - int(std::uint8_t(shown[index]))));
    // The encoder's own loss; what it was not told of would be 160 away.
    EXPECT_LT(furthest, 80);
}

} // namespace
