#include "video/arithmetic/Planes.h"

namespace orvane::Video {

namespace {

constexpr double redWeight = 0.2126;
constexpr double blueWeight = 0.0722;
constexpr double greenWeight = 1.0 - redWeight - blueWeight;
constexpr double lumaRange = 219.0 / 255.0;
constexpr double chromaRange = 224.0 / 255.0;

constexpr int fixed(double value)
{
    constexpr double one = 65536.0;
    return int(value * one + (value < 0.0 ? -0.5 : 0.5));
}

constexpr int half = 1 << 15;

/// What one unit of red, green and blue adds.
struct Mix
{
    int red;
    int green;
    int blue;
};

constexpr Mix luma{fixed(lumaRange * redWeight), fixed(lumaRange* greenWeight), fixed(lumaRange* blueWeight)};

constexpr double blueSpan = chromaRange / (2.0 * (1.0 - blueWeight));
constexpr Mix blueness{fixed(-redWeight * blueSpan), fixed(-greenWeight* blueSpan),
                       fixed((1.0 - blueWeight) * blueSpan)};

constexpr double redSpan = chromaRange / (2.0 * (1.0 - redWeight));
constexpr Mix redness{fixed((1.0 - redWeight) * redSpan), fixed(-greenWeight* redSpan), fixed(-blueWeight* redSpan)};

int red(std::uint32_t pixel)
{
    return int(pixel >> 16U & 0xFFU);
}

int green(std::uint32_t pixel)
{
    return int(pixel >> 8U & 0xFFU);
}

int blue(std::uint32_t pixel)
{
    return int(pixel & 0xFFU);
}

void lumaRow(const std::uint32_t* pixels, int width, std::uint8_t* target)
{
    for (int column = 0; column < width; ++column) {
        const std::uint32_t pixel = pixels[column];
        const int sum = luma.red * red(pixel) + luma.green * green(pixel) + luma.blue * blue(pixel);
        target[column] = std::uint8_t((sum + (16 << 16) + half) >> 16);
    }
}

std::uint8_t chroma(const Mix& mix, int reds, int greens, int blues)
{
    // The sums are of four pixels.
    return std::uint8_t((mix.red * reds + mix.green * greens + mix.blue * blues + (128 << 18) + 2 * (half << 1)) >> 18);
}

void chromaRow(const std::uint32_t* upper, const std::uint32_t* lower, int width, std::uint8_t* blues,
               std::uint8_t* reds)
{
    for (std::ptrdiff_t pair = 0; pair < width / 2; ++pair) {
        const std::uint32_t a = upper[2 * pair];
        const std::uint32_t b = upper[2 * pair + 1];
        const std::uint32_t c = lower[2 * pair];
        const std::uint32_t d = lower[2 * pair + 1];
        const int redSum = red(a) + red(b) + red(c) + red(d);
        const int greenSum = green(a) + green(b) + green(c) + green(d);
        const int blueSum = blue(a) + blue(b) + blue(c) + blue(d);
        blues[pair] = chroma(blueness, redSum, greenSum, blueSum);
        reds[pair] = chroma(redness, redSum, greenSum, blueSum);
    }
}

} // namespace

void toPlanes(const std::uint32_t* pixels, int stride, int width, int height, const Planes& planes)
{
    for (int row = 0; row < height; row += 2) {
        const std::uint32_t* upper = pixels + std::ptrdiff_t(row) * stride;
        std::uint8_t* target = planes.luma + std::ptrdiff_t(row) * planes.lumaStride;
        lumaRow(upper, width, target);
        lumaRow(upper + stride, width, target + planes.lumaStride);
        const std::ptrdiff_t chromaStart = std::ptrdiff_t(row / 2) * planes.chromaStride;
        chromaRow(upper, upper + stride, width, planes.blue + chromaStart, planes.red + chromaStart);
    }
}

} // namespace orvane::Video
