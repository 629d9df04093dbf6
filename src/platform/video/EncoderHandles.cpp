#include "platform/video/EncoderHandles.h"

#include "platform/video/VideoError.h"

#include <new>

namespace orvane {

CodecHandle makeEncoder(const char* name)
{
    const AVCodec* found = avcodec_find_encoder_by_name(name);
    requireVideo(found ? 0 : AVERROR_ENCODER_NOT_FOUND);
    CodecHandle codec(avcodec_alloc_context3(found));
    if (!codec)
        throw std::bad_alloc();
    codec->flags |= AV_CODEC_FLAG_GLOBAL_HEADER | AV_CODEC_FLAG_BITEXACT;
    return codec;
}

void encode(AVCodecContext& codec, const AVFrame* frame, AVPacket& packet, const PacketSink& sink)
{
    requireVideo(avcodec_send_frame(&codec, frame));
    for (;;) {
        const int code = avcodec_receive_packet(&codec, &packet);
        if (code == AVERROR(EAGAIN) || code == AVERROR_EOF)
            return;
        requireVideo(code);
        sink(packet, codec.time_base);
    }
}

} // namespace orvane
