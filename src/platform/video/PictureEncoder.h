#pragma once

#include "platform/video/EncoderHandles.h"
#include "platform/video/RateControl.h"
#include "platform/video/VideoPicture.h"
#include "platform/video/VideoSettings.h"

#include <deque>

struct x264_picture_t;
struct x264_t;

namespace orvane {

void closeEncoder(x264_t* encoder);

/// Encodes pictures to H.264, each of them a key picture or one predicted from the picture before, at the quantizers of
/// a RateControl. One thread at a time; it starts threads of its own.
class PictureEncoder
{
public:
    /// Throws VideoError.
    explicit PictureEncoder(const VideoSettings& settings);

    /// Fills in what a container is told of the track. Throws VideoError, std::bad_alloc.
    void describe(AVCodecParameters& track) const;

    /// Takes the next picture; it may change afterwards. Outside `changed` it is the picture before. Throws VideoError,
    /// std::bad_alloc and what `sink` throws.
    void append(VideoPicture& picture, const VideoPicture::Area& changed, const PacketSink& sink);

    /// Hands on what is still held. Called once, last.
    void flush(const PacketSink& sink);

    /// Pictures taken so far.
    std::int64_t count() const { return count_; }

private:
    void encode(x264_picture_t* picture, const PacketSink& sink);

    VideoSettings settings_;
    Handle<x264_t, closeEncoder> encoder_;
    RateControl rate_;
    /// Of the pictures that the encoder still holds.
    std::deque<int> quantizers_;
    PacketHandle packet_{av_packet_alloc()};
    std::int64_t count_ = 0;
};

} // namespace orvane
