#include "platform/video/VideoPicture.h"

#include <algorithm>

namespace orvane {

namespace {

constexpr std::uint8_t blackLuma = 16;
constexpr std::uint8_t noChroma = 128;

std::size_t lumaSize(int width, int height)
{
    return std::size_t(width) * std::size_t(height);
}

} // namespace

VideoPicture::VideoPicture(int width, int height)
    : width_(width)
    , height_(height)
    , bytes_(lumaSize(width, height) * 3 / 2, noChroma)
{
    std::fill_n(bytes_.begin(), lumaSize(width, height), blackLuma);
}

std::array<VideoPicture::Plane, 3> VideoPicture::planes()
{
    std::uint8_t* luma = bytes_.data();
    std::uint8_t* blue = luma + lumaSize(width_, height_);
    std::uint8_t* red = blue + lumaSize(width_, height_) / 4;
    return {Plane{.bytes = luma, .stride = width_}, Plane{.bytes = blue, .stride = width_ / 2},
            Plane{.bytes = red, .stride = width_ / 2}};
}

} // namespace orvane
