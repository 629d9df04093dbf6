#pragma once

#include <cstddef>
#include <cstdint>

namespace orvane::Video {

/// Where an area of pixels lies as the encoder takes it: a plane of luma, and two of chroma with half as many columns
/// and rows. 8 bits, limited range, ITU-R BT.709; a chroma sample stands in the middle of its four pixels.
struct Planes
{
    std::uint8_t* luma = nullptr;
    std::uint8_t* blue = nullptr;
    std::uint8_t* red = nullptr;
    /// Bytes from one row to the next.
    int lumaStride = 0;
    int chromaStride = 0;
};

/// Converts `width` by `height` pixels, both even, of 0xAARRGGBB with `stride` pixels from one row to the next.
void toPlanes(const std::uint32_t* pixels, int stride, int width, int height, const Planes& planes);

} // namespace orvane::Video
