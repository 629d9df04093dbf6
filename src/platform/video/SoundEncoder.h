#pragma once

#include "platform/sound/AudioReader.h"
#include "platform/video/EncoderHandles.h"
#include "platform/video/VideoSettings.h"

extern "C" {
#include <libavutil/audio_fifo.h>
#include <libswresample/swresample.h>
}

#include <vector>

namespace orvane {

/// Encodes sound to AAC at 44.1 kHz with 2 channels, whatever it comes as. It goes through 16-bit numbers, as a sound
/// track's samples do. One thread at a time.
class SoundEncoder
{
public:
    /// Of what comes out, in Hz.
    static constexpr int rate = 44100;

    /// Throws VideoError.
    explicit SoundEncoder(const VideoSettings& settings);

    /// Fills in what a container is told of the track. Throws VideoError, std::bad_alloc.
    void describe(AVCodecParameters& track) const;

    /// Takes the next samples, with the channels that were set. Throws VideoError and what `sink` throws.
    void append(const SoundPlanes& planes, const PacketSink& sink);

    /// Hands on what is still held. Called once, last.
    void flush(const PacketSink& sink);

    /// Frames taken so far, at the rate of what is appended.
    std::int64_t count() const { return count_; }

private:
    void openCodec();
    void openConverter(const VideoSettings& settings);
    void convert(const std::uint8_t** source, int frames);
    void encodeQueued(int least, const PacketSink& sink);

    CodecHandle codec_;
    Handle<SwrContext, swr_free> converter_;
    Handle<AVAudioFifo, av_audio_fifo_free> queue_;
    FrameHandle frame_{av_frame_alloc()};
    FrameHandle converted_{av_frame_alloc()};
    PacketHandle packet_{av_packet_alloc()};
    std::vector<std::vector<std::int16_t>> samples_;
    std::int64_t count_ = 0;
    std::int64_t encoded_ = 0;
};

} // namespace orvane
