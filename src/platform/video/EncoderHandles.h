#pragma once

#include "platform/sound/Handle.h"
#include "platform/video/PacketSink.h"

extern "C" {
#include <libavcodec/avcodec.h>
}

namespace orvane {

using CodecHandle = Handle<AVCodecContext, avcodec_free_context>;
using PacketHandle = Handle<AVPacket, av_packet_free>;
using FrameHandle = Handle<AVFrame, av_frame_free>;

/// An encoder that is not opened yet. Throws VideoError where the library has none of that name, std::bad_alloc.
CodecHandle makeEncoder(const char* name);

/// Encodes `frame`, or with none what the encoder still holds, and hands on what comes out. Throws VideoError,
/// std::bad_alloc and what `sink` throws.
void encode(AVCodecContext& codec, const AVFrame* frame, AVPacket& packet, const PacketSink& sink);

} // namespace orvane
