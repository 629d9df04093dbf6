#include "platform/sound/AudioReader.h"

#include "platform/filesystem/FileError.h"
#include "platform/filesystem/StagingFile.h"
#include "platform/sound/FileStream.h"
#include "platform/sound/QuietLibrary.h"
#include "platform/sound/SampleFormat.h"
#include "platform/sound/SoundError.h"
#include "platform/sound/SoundLimits.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/opt.h>
}

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The containers that are opened; none of them leads on to another file or address.
constexpr char containers[] = "mp3,wav,w64,flac,mov,ogg,aiff,caf,aac";

Descriptor openRegularFile(const QString& path)
{
    // A pipe would keep its opener waiting for a writer.
    Descriptor file(retried([&] { return ::open(systemName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK); }));
    struct stat found = {};
    if (!file.isOpen() || ::fstat(file.number(), &found) != 0)
        throw FileError(path, errno);
    if (!S_ISREG(found.st_mode))
        throw FileError(path, S_ISDIR(found.st_mode) ? EISDIR : EINVAL);
    return file;
}

/// Whether a tag stands in front of the sound. One longer than what is probed hides the sound behind it, so that the
/// name must vouch for the file; else the content does.
bool startsWithTag(const Descriptor& file)
{
    char start[3] = {};
    return ::pread(file.number(), start, sizeof start, 0) == sizeof start && QByteArrayView(start, 3) == "ID3";
}

bool isWithinLimits(int sampleRate, int channels)
{
    return sampleRate >= 1 && sampleRate <= maximumSampleRate && channels >= 1 && channels <= maximumChannelCount;
}

} // namespace

class AudioReader::Decoder
{
public:
    explicit Decoder(const QString& path)
        : path_(path)
    {
        silenceLibrary();
        openFile();
        openCodec();
        if (!decodeNext())
            throw SoundError(SoundError::Kind::NoAudio, path_, u"No audio"_s);
        sampleRate_ = frame_->sample_rate;
        channelCount_ = frame_->ch_layout.nb_channels;
        if (!isWithinLimits(sampleRate_, channelCount_))
            throw unsupported();
    }

    int sampleRate() const { return sampleRate_; }

    int channelCount() const { return channelCount_; }

    qint64 expectedFrames() const
    {
        // Speech at 24 kbit/s has about so many, and no music has.
        constexpr qint64 framesInByte = 16;
        const AVStream* track = container_->streams[streamIndex_];
        const AVRational frame = {.num = 1, .den = sampleRate_};
        const qint64 promised = track->duration > 0 ? av_rescale_q(track->duration, track->time_base, frame) : 0;
        return std::clamp<qint64>(promised, 0, framesInByte * std::max<qint64>(avio_size(container_->pb), 0));
    }

    bool read(SoundPlanes& block)
    {
        if (!isFirst_ && !decodeNext())
            return false;
        isFirst_ = false;
        if (frame_->sample_rate != sampleRate_ || frame_->ch_layout.nb_channels != channelCount_)
            throw unsupported();
        if (!toPlanes(*frame_, block))
            throw unsupported();
        frames_ += frame_->nb_samples;
        if (frames_ > qint64(maximumHours) * 3600 * sampleRate_)
            throw SoundError(SoundError::Kind::NoAudio, path_, u"More than %1 hours"_s.arg(maximumHours));
        return true;
    }

private:
    SoundError unsupported() const { return {SoundError::Kind::Unsupported, path_, u"Not a format this can read"_s}; }

    void require(int code) const
    {
        // Also what the library has no memory for: that is a file whose header lies.
        if (code < 0)
            throw SoundError::fromLibrary(path_, stream_ && stream_->error() < 0 ? stream_->error() : code);
    }

    void openFile()
    {
        Descriptor file = openRegularFile(path_);
        const char* name = startsWithTag(file) ? "tagged.mp3" : "";
        stream_ = std::make_unique<FileStream>(std::move(file), FileStream::Mode::Read);
        AVFormatContext* context = avformat_alloc_context();
        if (!context)
            throw std::bad_alloc();
        context->pb = stream_->context();
        context->format_whitelist = av_strdup(containers);
        const int code = avformat_open_input(&context, name, nullptr, nullptr);
        container_.reset(context);
        // What the library knows but is not among the containers.
        if (code == AVERROR(EINVAL))
            throw unsupported();
        require(code);
        require(avformat_find_stream_info(container_.get(), nullptr));
    }

    void openCodec()
    {
        const AVCodec* codec = nullptr;
        const int index = av_find_best_stream(container_.get(), AVMEDIA_TYPE_AUDIO, -1, -1, &codec, 0);
        if (index < 0 || !codec)
            throw unsupported();
        for (unsigned other = 0; other < container_->nb_streams; ++other)
            container_->streams[other]->discard = int(other) == index ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
        const AVStream* track = container_->streams[index];
        if (!isWithinLimits(track->codecpar->sample_rate, track->codecpar->ch_layout.nb_channels))
            throw unsupported();
        streamIndex_ = index;
        codec_.reset(avcodec_alloc_context3(codec));
        if (!codec_ || !packet_ || !frame_)
            throw std::bad_alloc();
        require(avcodec_parameters_to_context(codec_.get(), track->codecpar));
        codec_->pkt_timebase = track->time_base;
        require(avcodec_open2(codec_.get(), codec, nullptr));
        findsItsFrames_ = codec->id == AV_CODEC_ID_MP3 || QByteArrayView(container_->iformat->name) == "aac";
    }

    /// Streams that find their next frame by themselves go on behind damage, as every player does; in the others it
    /// would shift what follows.
    bool passesOver(int code) const { return code == AVERROR_INVALIDDATA && findsItsFrames_; }

    /// Decodes into `frame_` until there are samples; false at the end of the file.
    bool decodeNext()
    {
        for (;;) {
            const int code = avcodec_receive_frame(codec_.get(), frame_.get());
            if (code == AVERROR_EOF)
                return false;
            if (code == AVERROR(EAGAIN))
                feed();
            else if (!passesOver(code))
                require(code);
            if (code == 0 && frame_->nb_samples > 0)
                return true;
        }
    }

    /// Gives the decoder the next packet, or the end.
    void feed()
    {
        const bool hasPacket = readPacket();
        const int code = avcodec_send_packet(codec_.get(), hasPacket ? packet_.get() : nullptr);
        av_packet_unref(packet_.get());
        if (!passesOver(code))
            require(code);
    }

    bool readPacket()
    {
        for (;;) {
            const int code = av_read_frame(container_.get(), packet_.get());
            if (stream_->error() < 0)
                require(stream_->error());
            if (code == AVERROR_EOF || passesOver(code))
                return false;
            require(code);
            if (packet_->stream_index == streamIndex_)
                return true;
            av_packet_unref(packet_.get());
        }
    }

    QString path_;
    std::unique_ptr<FileStream> stream_;
    Handle<AVFormatContext, avformat_close_input> container_;
    Handle<AVCodecContext, avcodec_free_context> codec_;
    Handle<AVPacket, av_packet_free> packet_{av_packet_alloc()};
    Handle<AVFrame, av_frame_free> frame_{av_frame_alloc()};
    int streamIndex_ = -1;
    bool findsItsFrames_ = false;
    int sampleRate_ = 0;
    int channelCount_ = 0;
    bool isFirst_ = true;
    qint64 frames_ = 0;
};

AudioReader::AudioReader(const QString& path)
    : decoder_(std::make_unique<Decoder>(path))
{
}

AudioReader::~AudioReader() = default;
AudioReader::AudioReader(AudioReader&&) noexcept = default;
AudioReader& AudioReader::operator=(AudioReader&&) noexcept = default;

int AudioReader::sampleRate() const
{
    return decoder_->sampleRate();
}

int AudioReader::channelCount() const
{
    return decoder_->channelCount();
}

qint64 AudioReader::expectedFrames() const
{
    return decoder_->expectedFrames();
}

bool AudioReader::read(SoundPlanes& block)
{
    return decoder_->read(block);
}

} // namespace orvane
