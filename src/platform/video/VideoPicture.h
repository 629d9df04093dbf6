#pragma once

#include "platform/sound/Handle.h"

#include <array>
#include <cstdint>

struct AVFrame;

namespace orvane {

void freePicture(AVFrame* frame);

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

    /// Black. Both sides are even. Throws std::bad_alloc.
    VideoPicture(int width, int height);

    int width() const;
    int height() const;

    /// Luma, blue and red, to be written. Asked for anew before each change: the encoder may still hold the last one.
    std::array<Plane, 3> planes();

private:
    friend class VideoFile;
    Handle<AVFrame, freePicture> frame_;
};

} // namespace orvane
