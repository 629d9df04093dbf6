#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace orvane {

/// A picture as the encoder takes it: 8-bit planes of luma, blue and red difference, the last two with half as many
/// columns and rows; limited range, ITU-R BT.709. Its memory is used again for picture after picture.
class VideoPicture
{
public:
    struct Plane
    {
        std::uint8_t* bytes = nullptr;
        /// Bytes from one row to the next.
        int stride = 0;
    };

    /// Whole pixels, y downwards.
    struct Area
    {
        int left = 0;
        int top = 0;
        int width = 0;
        int height = 0;
    };

    /// Black. Both sides are even. Throws std::bad_alloc.
    VideoPicture(int width, int height);

    int width() const { return width_; }

    int height() const { return height_; }

    Area area() const { return {.width = width_, .height = height_}; }

    /// Luma, blue and red, to be written.
    std::array<Plane, 3> planes();

private:
    int width_;
    int height_;
    std::vector<std::uint8_t> bytes_;
};

} // namespace orvane
