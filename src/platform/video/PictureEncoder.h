#pragma once

#include "platform/video/EncoderHandles.h"
#include "platform/video/VideoSettings.h"

namespace orvane {

/// Encodes pictures to H.264. One thread at a time; it starts threads of its own.
class PictureEncoder
{
public:
    /// Throws VideoError.
    explicit PictureEncoder(const VideoSettings& settings);

    const AVCodecContext& codec() const { return *codec_; }

    /// Takes the next picture; it may change afterwards. Throws VideoError and what `sink` throws.
    void append(AVFrame& picture, const PacketSink& sink);

    /// Hands on what is still held. Called once, last.
    void flush(const PacketSink& sink);

    /// Pictures taken so far.
    std::int64_t count() const { return count_; }

private:
    CodecHandle codec_;
    PacketHandle packet_{av_packet_alloc()};
    std::int64_t count_ = 0;
};

} // namespace orvane
