#include "platform/video/PictureEncoder.h"

#include "platform/video/VideoError.h"

extern "C" {
#include <libavutil/opt.h>
}

#include <algorithm>
#include <new>
#include <thread>

namespace orvane {

namespace {

/// Each thread holds frames of its own.
constexpr unsigned mostThreads = 8;

/// A stream that uses neither calls itself by a lower profile.
const QByteArray highProfile = "8x8dct=1:cabac=1";

void describePicture(AVCodecContext& codec, const VideoSettings& settings)
{
    codec.width = settings.width;
    codec.height = settings.height;
    codec.pix_fmt = AV_PIX_FMT_YUV420P;
    codec.time_base = {.num = 1, .den = settings.framesPerSecond};
    codec.framerate = {.num = settings.framesPerSecond, .den = 1};
    codec.color_range = AVCOL_RANGE_MPEG;
    codec.colorspace = AVCOL_SPC_BT709;
    codec.color_primaries = AVCOL_PRI_BT709;
    codec.color_trc = AVCOL_TRC_BT709;
    codec.chroma_sample_location = AVCHROMA_LOC_CENTER;
}

void setOption(AVCodecContext& codec, const char* name, const QByteArray& value)
{
    if (!value.isEmpty())
        requireVideo(av_opt_set(codec.priv_data, name, value.constData(), 0));
}

} // namespace

PictureEncoder::PictureEncoder(const VideoSettings& settings)
    : codec_(makeEncoder("libx264"))
{
    if (!packet_)
        throw std::bad_alloc();
    describePicture(*codec_, settings);
    codec_->bit_rate = settings.bitRate;
    codec_->gop_size = settings.keyFrameInterval;
    codec_->thread_count = int(std::clamp(std::thread::hardware_concurrency() * 3 / 2, 1U, mostThreads));
    setOption(*codec_, "preset", settings.preset);
    setOption(*codec_, "tune", settings.tuning);
    setOption(*codec_, "profile", "high");
    setOption(*codec_, "x264-params",
              settings.parameters.isEmpty() ? highProfile : settings.parameters + ':' + highProfile);
    requireVideo(avcodec_open2(codec_.get(), codec_->codec, nullptr));
}

void PictureEncoder::append(AVFrame& picture, const PacketSink& sink)
{
    picture.pts = count_++;
    picture.pict_type = AV_PICTURE_TYPE_NONE;
    encode(*codec_, &picture, *packet_, 1, sink);
}

void PictureEncoder::flush(const PacketSink& sink)
{
    encode(*codec_, nullptr, *packet_, 1, sink);
}

} // namespace orvane
