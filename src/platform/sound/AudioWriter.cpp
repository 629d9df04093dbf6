#include "platform/sound/AudioWriter.h"

#include "platform/filesystem/AtomicFile.h"
#include "platform/filesystem/StagingFile.h"
#include "platform/sound/FileStream.h"
#include "platform/sound/QuietLibrary.h"
#include "platform/sound/SampleFormat.h"
#include "platform/sound/SoundError.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/opt.h>
}

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <new>
#include <unistd.h>

namespace orvane {

namespace {

struct CodecTraits
{
    AVCodecID codec;
    const char* container;
    AVSampleFormat sampleFormat;
    int bitRate;
};

CodecTraits traitsOf(AudioCodec codec)
{
    switch (codec) {
    case AudioCodec::Flac24:
        return {AV_CODEC_ID_FLAC, "flac", AV_SAMPLE_FMT_S32, 0};
    case AudioCodec::Alac24:
        return {AV_CODEC_ID_ALAC, "ipod", AV_SAMPLE_FMT_S32P, 0};
    case AudioCodec::Aac256:
        return {AV_CODEC_ID_AAC, "ipod", AV_SAMPLE_FMT_FLTP, 256000};
    case AudioCodec::Wav24:
        break;
    }
    return {AV_CODEC_ID_PCM_S24LE, "wav", AV_SAMPLE_FMT_S32, 0};
}

/// Where the speakers of so many channels stand, in the order that the program counts them in.
AVChannelLayout layoutOf(int channels)
{
    constexpr std::array<std::uint64_t, 8> masks{
        AV_CH_LAYOUT_MONO,         AV_CH_LAYOUT_STEREO,       AV_CH_LAYOUT_SURROUND, AV_CH_LAYOUT_QUAD,
        AV_CH_LAYOUT_5POINT0_BACK, AV_CH_LAYOUT_5POINT1_BACK, AV_CH_LAYOUT_6POINT1,  AV_CH_LAYOUT_7POINT1};
    AVChannelLayout layout = {};
    if (channels >= 1 && channels <= int(masks.size()))
        av_channel_layout_from_mask(&layout, masks[std::size_t(channels) - 1]);
    else
        layout = {.order = AV_CHANNEL_ORDER_UNSPEC, .nb_channels = channels, .u = {}, .opaque = nullptr};
    return layout;
}

/// The layout of so many channels, or where the encoder knows it not, the one of as many that it knows.
AVChannelLayout layoutFor(const AVCodec& encoder, int channels)
{
    const AVChannelLayout wanted = layoutOf(channels);
    const AVChannelLayout* substitute = nullptr;
    for (const AVChannelLayout* known = encoder.ch_layouts; known && known->nb_channels > 0; ++known) {
        if (av_channel_layout_compare(known, &wanted) == 0)
            return wanted;
        if (!substitute && known->nb_channels == channels)
            substitute = known;
    }
    return substitute ? *substitute : wanted;
}

bool exceedsRiff(const AudioWriter::Settings& settings)
{
    constexpr qint64 room = 0xFFFFFFFF - 4096;
    return settings.expectedFrames > room / (qint64(3) * std::max(settings.channelCount, 1));
}

} // namespace

class AudioWriter::Encoder
{
public:
    Encoder(const QString& finalPath, const QString& temporaryPath, const Settings& settings)
        : finalPath_(finalPath)
        , temporaryPath_(temporaryPath)
        , temporaryName_(systemName(temporaryPath))
        , settings_(settings)
        , traits_(traitsOf(settings.codec))
    {
        silenceLibrary();
        try {
            openFile();
            openCodec();
            openContainer();
            openFrame();
        } catch (...) {
            discard();
            throw;
        }
    }

    ~Encoder() { discard(); }

    void write(std::span<const std::vector<double>> channels, std::size_t start, std::size_t count)
    {
        while (count > 0) {
            const std::size_t taken = std::min(count, std::size_t(frameLength_ - filled_));
            fill(channels, start, taken);
            start += taken;
            count -= taken;
            if (filled_ == frameLength_)
                sendFrame();
        }
    }

    void finish()
    {
        if (filled_ > 0)
            sendFrame();
        send(nullptr);
        require(av_write_trailer(container_.get()));
        avio_flush(stream_->context());
        require(stream_->error());
        if (!stream_->close())
            throw FileError(finalPath_, errno);
        const QString staged = std::exchange(temporaryPath_, QString());
        installStaged(staged, finalPath_);
    }

private:
    void require(int code) const
    {
        if (stream_ && stream_->error() < 0)
            throw FileError(finalPath_, AVUNERROR(stream_->error()));
        if (code == AVERROR(ENOMEM))
            throw std::bad_alloc();
        if (code < 0)
            throw SoundError::fromLibrary(finalPath_, code);
    }

    void openFile()
    {
        Descriptor file = makeStagingFile(temporaryName_, 0666);
        if (!file.isOpen()) {
            const int code = errno;
            temporaryPath_.clear();
            throw FileError(finalPath_, code);
        }
        stream_ = std::make_unique<FileStream>(std::move(file), FileStream::Mode::Write);
    }

    void openCodec()
    {
        const AVCodec* codec = avcodec_find_encoder(traits_.codec);
        require(codec ? 0 : AVERROR_ENCODER_NOT_FOUND);
        codec_.reset(avcodec_alloc_context3(codec));
        if (!codec_)
            throw std::bad_alloc();
        codec_->sample_rate = settings_.sampleRate;
        codec_->ch_layout = layoutFor(*codec, settings_.channelCount);
        codec_->sample_fmt = traits_.sampleFormat;
        codec_->bit_rate = traits_.bitRate;
        codec_->bits_per_raw_sample = 24;
        codec_->time_base = {.num = 1, .den = settings_.sampleRate};
        // No trace of library or version: the same sound gives the same bytes.
        codec_->flags |= AV_CODEC_FLAG_BITEXACT;
        if (QByteArrayView(traits_.container) == "ipod")
            codec_->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
        require(avcodec_open2(codec_.get(), codec, nullptr));
    }

    void openContainer()
    {
        AVFormatContext* context = nullptr;
        const int code = avformat_alloc_output_context2(&context, nullptr, traits_.container, nullptr);
        container_.reset(context);
        require(code);
        container_->pb = stream_->context();
        container_->flags |= AVFMT_FLAG_BITEXACT | AVFMT_FLAG_CUSTOM_IO;
        AVStream* track = avformat_new_stream(container_.get(), nullptr);
        if (!track)
            throw std::bad_alloc();
        track->time_base = codec_->time_base;
        require(avcodec_parameters_from_context(track->codecpar, codec_.get()));
        if (settings_.codec == AudioCodec::Wav24 && exceedsRiff(settings_))
            require(av_opt_set(container_->priv_data, "rf64", "always", 0));
        require(avformat_write_header(container_.get(), nullptr));
    }

    void openFrame()
    {
        constexpr int ownChoice = 4096;
        frameLength_ = codec_->frame_size > 0 ? codec_->frame_size : ownChoice;
        if (!frame_ || !packet_)
            throw std::bad_alloc();
        frame_->format = codec_->sample_fmt;
        frame_->sample_rate = codec_->sample_rate;
        frame_->ch_layout = codec_->ch_layout;
        frame_->nb_samples = frameLength_;
        require(av_frame_get_buffer(frame_.get(), 0));
    }

    /// The place of a channel's sample in the frame, as the sample format lays it out.
    template <typename Sample>
    Sample* placeOf(std::size_t channel) const
    {
        const bool isPlanar = av_sample_fmt_is_planar(traits_.sampleFormat) != 0;
        auto* plane = reinterpret_cast<Sample*>(frame_->extended_data[isPlanar ? channel : 0]);
        return isPlanar ? plane + filled_
                        : plane + std::size_t(filled_) * std::size_t(settings_.channelCount) + channel;
    }

    template <typename Sample, typename Convert>
    void fillWith(std::span<const std::vector<double>> channels, std::size_t start, std::size_t count, Convert convert)
    {
        const bool isPlanar = av_sample_fmt_is_planar(traits_.sampleFormat) != 0;
        for (std::size_t channel = 0; channel < channels.size(); ++channel)
            convert(std::span(channels[channel]).subspan(start, count), placeOf<Sample>(channel),
                    isPlanar ? 1 : channels.size());
    }

    void fill(std::span<const std::vector<double>> channels, std::size_t start, std::size_t count)
    {
        require(av_frame_make_writable(frame_.get()));
        if (traits_.sampleFormat == AV_SAMPLE_FMT_FLTP)
            fillWith<float>(channels, start, count, toWritten);
        else
            fillWith<std::int32_t>(channels, start, count, to24Bit);
        filled_ += int(count);
    }

    void sendFrame()
    {
        frame_->nb_samples = filled_;
        frame_->pts = written_;
        written_ += filled_;
        filled_ = 0;
        send(frame_.get());
        frame_->nb_samples = frameLength_;
    }

    /// Encodes the frame, or with none what the encoder still holds, and writes what comes out.
    void send(AVFrame* frame)
    {
        require(avcodec_send_frame(codec_.get(), frame));
        for (;;) {
            const int code = avcodec_receive_packet(codec_.get(), packet_.get());
            if (code == AVERROR(EAGAIN) || code == AVERROR_EOF)
                return;
            require(code);
            packet_->stream_index = 0;
            av_packet_rescale_ts(packet_.get(), codec_->time_base, container_->streams[0]->time_base);
            require(av_interleaved_write_frame(container_.get(), packet_.get()));
        }
    }

    void discard() noexcept
    {
        if (!temporaryPath_.isEmpty())
            ::unlink(temporaryName_.constData());
        temporaryPath_.clear();
    }

    QString finalPath_;
    QString temporaryPath_;
    QByteArray temporaryName_;
    Settings settings_;
    CodecTraits traits_;
    std::unique_ptr<FileStream> stream_;
    Handle<AVFormatContext, avformat_free_context> container_;
    Handle<AVCodecContext, avcodec_free_context> codec_;
    Handle<AVPacket, av_packet_free> packet_{av_packet_alloc()};
    Handle<AVFrame, av_frame_free> frame_{av_frame_alloc()};
    int frameLength_ = 0;
    int filled_ = 0;
    std::int64_t written_ = 0;
};

AudioWriter::AudioWriter(const QString& finalPath, const QString& temporaryPath, const Settings& settings)
    : encoder_(std::make_unique<Encoder>(finalPath, temporaryPath, settings))
{
}

AudioWriter::~AudioWriter() = default;
AudioWriter::AudioWriter(AudioWriter&&) noexcept = default;
AudioWriter& AudioWriter::operator=(AudioWriter&&) noexcept = default;

void AudioWriter::write(std::span<const std::vector<double>> channels, std::size_t start, std::size_t count)
{
    encoder_->write(channels, start, count);
}

void AudioWriter::finish()
{
    encoder_->finish();
}

} // namespace orvane
