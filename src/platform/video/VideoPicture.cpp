#include "platform/video/VideoPicture.h"

extern "C" {
#include <libavutil/frame.h>
#include <libavutil/pixfmt.h>
}

#include <cstring>
#include <new>

namespace orvane {

void freePicture(AVFrame* frame)
{
    av_frame_free(&frame);
}

VideoPicture::VideoPicture(int width, int height)
    : frame_(av_frame_alloc())
{
    if (!frame_)
        throw std::bad_alloc();
    frame_->format = AV_PIX_FMT_YUV420P;
    frame_->width = width;
    frame_->height = height;
    frame_->color_range = AVCOL_RANGE_MPEG;
    if (av_frame_get_buffer(frame_.get(), 0) < 0)
        throw std::bad_alloc();
    const std::array<Plane, 3> all = planes();
    std::memset(all[0].bytes, 16, std::size_t(all[0].stride) * std::size_t(height));
    for (const Plane& chroma : {all[1], all[2]})
        std::memset(chroma.bytes, 128, std::size_t(chroma.stride) * std::size_t(height / 2));
}

int VideoPicture::width() const
{
    return frame_->width;
}

int VideoPicture::height() const
{
    return frame_->height;
}

std::array<VideoPicture::Plane, 3> VideoPicture::planes()
{
    if (av_frame_make_writable(frame_.get()) < 0)
        throw std::bad_alloc();
    std::array<Plane, 3> planes;
    for (std::size_t index = 0; index < planes.size(); ++index)
        planes[index] = {.bytes = frame_->data[index], .stride = frame_->linesize[index]};
    return planes;
}

} // namespace orvane
