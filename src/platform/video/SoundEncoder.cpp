#include "platform/video/SoundEncoder.h"

#include "platform/video/VideoError.h"

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/opt.h>
}

#include <algorithm>
#include <array>
#include <cmath>
#include <new>

namespace orvane {

namespace {

constexpr int outputBitRate = 192000;
constexpr AVChannelLayout stereo = AV_CHANNEL_LAYOUT_STEREO;

void to16Bit(const std::vector<float>& samples, std::vector<std::int16_t>& numbers)
{
    constexpr float fullScale = 32768.0F;
    numbers.resize(samples.size());
    std::transform(samples.begin(), samples.end(), numbers.begin(), [](float sample) {
        return std::int16_t(std::lrint(std::clamp(sample * fullScale, -fullScale, fullScale - 1.0F)));
    });
}

/// Makes room for `samples` frames of what the encoder takes, more than there was.
void resize(AVFrame& frame, const AVCodecContext& codec, int samples)
{
    av_frame_unref(&frame);
    frame.format = codec.sample_fmt;
    frame.sample_rate = codec.sample_rate;
    frame.ch_layout = codec.ch_layout;
    frame.nb_samples = samples;
    requireVideo(av_frame_get_buffer(&frame, 0));
}

} // namespace

SoundEncoder::SoundEncoder(const VideoSettings& settings)
    : codec_(makeEncoder("aac"))
{
    if (!frame_ || !converted_ || !packet_)
        throw std::bad_alloc();
    openCodec();
    openConverter(settings);
    queue_.reset(av_audio_fifo_alloc(codec_->sample_fmt, stereo.nb_channels, codec_->frame_size));
    if (!queue_)
        throw std::bad_alloc();
}

void SoundEncoder::openCodec()
{
    codec_->sample_rate = rate;
    codec_->ch_layout = stereo;
    codec_->sample_fmt = AV_SAMPLE_FMT_FLTP;
    codec_->bit_rate = outputBitRate;
    codec_->time_base = {.num = 1, .den = rate};
    requireVideo(avcodec_open2(codec_.get(), codec_->codec, nullptr));
    resize(*frame_, *codec_, codec_->frame_size);
}

void SoundEncoder::openConverter(const VideoSettings& settings)
{
    samples_.resize(std::size_t(settings.channelCount));
    AVChannelLayout source = stereo;
    // A single channel is given twice: both sides are as loud as it.
    if (settings.channelCount > 2)
        av_channel_layout_default(&source, settings.channelCount);
    SwrContext* converter = nullptr;
    const int code = swr_alloc_set_opts2(&converter, &codec_->ch_layout, codec_->sample_fmt, rate, &source,
                                         AV_SAMPLE_FMT_S16P, settings.sampleRate, 0, nullptr);
    converter_.reset(converter);
    requireVideo(code);
    requireVideo(swr_init(converter_.get()));
}

void SoundEncoder::describe(AVCodecParameters& track) const
{
    requireVideo(avcodec_parameters_from_context(&track, codec_.get()));
}

void SoundEncoder::append(const SoundPlanes& planes, const PacketSink& sink)
{
    std::array<const std::uint8_t*, 8> source{};
    for (std::size_t channel = 0; channel < samples_.size(); ++channel) {
        to16Bit(planes[channel], samples_[channel]);
        source[channel] = reinterpret_cast<const std::uint8_t*>(samples_[channel].data());
    }
    if (samples_.size() == 1)
        source[1] = source[0];
    const int frames = int(planes.front().size());
    convert(source.data(), frames);
    count_ += frames;
    encodeQueued(codec_->frame_size, sink);
}

void SoundEncoder::flush(const PacketSink& sink)
{
    convert(nullptr, 0);
    encodeQueued(1, sink);
    encode(*codec_, nullptr, *packet_, sink);
}

/// Converts and queues; without a source what the converter still holds.
void SoundEncoder::convert(const std::uint8_t** source, int frames)
{
    const int most = swr_get_out_samples(converter_.get(), frames);
    requireVideo(most);
    if (most == 0)
        return;
    if (converted_->nb_samples < most)
        resize(*converted_, *codec_, most);
    const int made = swr_convert(converter_.get(), converted_->extended_data, most, source, frames);
    requireVideo(made);
    requireVideo(av_audio_fifo_write(queue_.get(), reinterpret_cast<void**>(converted_->extended_data), made));
}

/// Encodes what is queued in frames of the encoder's length, down to a last one of `least`.
void SoundEncoder::encodeQueued(int least, const PacketSink& sink)
{
    while (av_audio_fifo_size(queue_.get()) >= least) {
        requireVideo(av_frame_make_writable(frame_.get()));
        const int taken =
            av_audio_fifo_read(queue_.get(), reinterpret_cast<void**>(frame_->extended_data), codec_->frame_size);
        requireVideo(taken);
        frame_->nb_samples = taken;
        frame_->pts = encoded_;
        encoded_ += taken;
        encode(*codec_, frame_.get(), *packet_, sink);
        frame_->nb_samples = codec_->frame_size;
    }
}

} // namespace orvane
