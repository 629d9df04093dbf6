#include "platform/video/MovieContainer.h"

#include "platform/filesystem/AtomicFile.h"
#include "platform/filesystem/StagingFile.h"
#include "platform/sound/QuietLibrary.h"
#include "platform/video/VideoError.h"

extern "C" {
#include <libavutil/opt.h>
}

#include <cerrno>
#include <fcntl.h>
#include <new>
#include <unistd.h>

namespace orvane {

namespace {

VideoError systemError(int code)
{
    return VideoError(FileError(QString(), code).reason());
}

Descriptor makeFile(const QString& path)
{
    try {
        Descriptor file = makeStagingFile(systemName(path), 0666);
        if (!file.isOpen())
            throw systemError(errno);
        return file;
    } catch (const FileError& error) {
        throw VideoError(error.reason());
    }
}

} // namespace

MovieContainer::MovieContainer(QString finalPath, QString temporaryPath)
    : finalPath_(std::move(finalPath))
    , stream_(std::make_unique<FileStream>(makeFile(temporaryPath), FileStream::Mode::Write))
{
    silenceLibrary();
    temporaryPath_ = std::move(temporaryPath);
    AVFormatContext* context = nullptr;
    const int code = avformat_alloc_output_context2(&context, nullptr, "mp4", nullptr);
    container_.reset(context);
    if (code < 0) {
        discard();
        requireVideo(code);
    }
    container_->pb = stream_->context();
    // Whole buffers go to the disk, not packet by packet.
    container_->flush_packets = 0;
    container_->flags |= AVFMT_FLAG_BITEXACT | AVFMT_FLAG_CUSTOM_IO;
    container_->opaque = this;
    container_->io_open = openAgain;
    container_->io_close2 = closeAgain;
}

MovieContainer::~MovieContainer()
{
    discard();
}

int MovieContainer::addTrack(const std::function<void(AVCodecParameters&)>& describe, AVRational timeBase)
{
    AVStream* track = avformat_new_stream(container_.get(), nullptr);
    if (!track)
        throw std::bad_alloc();
    track->time_base = timeBase;
    describe(*track->codecpar);
    return track->index;
}

void MovieContainer::start()
{
    require(av_opt_set(container_->priv_data, "movflags", "faststart", 0));
    require(avformat_write_header(container_.get(), nullptr));
}

void MovieContainer::write(AVPacket& packet, AVRational timeBase, int track)
{
    const std::scoped_lock lock(mutex_);
    packet.stream_index = track;
    av_packet_rescale_ts(&packet, timeBase, container_->streams[track]->time_base);
    require(av_interleaved_write_frame(container_.get(), &packet));
}

void MovieContainer::finish()
{
    const std::scoped_lock lock(mutex_);
    require(av_write_trailer(container_.get()));
    avio_flush(stream_->context());
    require(stream_->error());
    if (!stream_->close())
        throw systemError(errno);
    try {
        installStaged(std::exchange(temporaryPath_, QString()), finalPath_);
    } catch (const FileError& error) {
        throw VideoError(error.reason());
    }
}

void MovieContainer::require(int code) const
{
    // What the system said tells more than what the library made of it.
    if (stream_->error() < 0)
        throw systemError(AVUNERROR(stream_->error()));
    if (moved_ && moved_->error() < 0)
        throw systemError(AVUNERROR(moved_->error()));
    requireVideo(code);
}

void MovieContainer::discard() noexcept
{
    if (!temporaryPath_.isEmpty())
        ::unlink(systemName(temporaryPath_).constData());
    temporaryPath_.clear();
}

int MovieContainer::openAgain(AVFormatContext* container, AVIOContext** stream, const char*, int, AVDictionary**)
{
    auto* self = static_cast<MovieContainer*>(container->opaque);
    const QByteArray name = systemName(self->temporaryPath_);
    Descriptor file(retried([&] { return ::open(name.constData(), O_RDONLY | O_CLOEXEC); }));
    if (!file.isOpen())
        return AVERROR(errno);
    self->moved_ = std::make_unique<FileStream>(std::move(file), FileStream::Mode::Read);
    *stream = self->moved_->context();
    return 0;
}

int MovieContainer::closeAgain(AVFormatContext* container, AVIOContext*)
{
    static_cast<MovieContainer*>(container->opaque)->moved_.reset();
    return 0;
}

} // namespace orvane
