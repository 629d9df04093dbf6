#include "platform/video/VideoFile.h"

#include "platform/video/MovieContainer.h"
#include "platform/video/PictureEncoder.h"
#include "platform/video/SoundEncoder.h"
#include "platform/video/VideoError.h"

#include <array>
#include <condition_variable>
#include <mutex>
#include <new>
#include <optional>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// What `make` gives; VideoError with `refusal` where the encoding library will not have it.
template <typename Make>
auto accepted(const QString& refusal, const Make& make)
{
    try {
        return make();
    } catch (const VideoError&) {
        throw VideoError(refusal);
    }
}

} // namespace

class VideoFile::Writer
{
public:
    Writer(const QString& finalPath, const QString& temporaryPath, const VideoSettings& settings)
        : settings_(settings)
        , container_(finalPath, temporaryPath)
        , pictures_(accepted(u"video input rejected"_s, [&] { return PictureEncoder(settings); }))
        , sound_(accepted(u"audio input rejected"_s, [&] { return SoundEncoder(settings); }))
    {
        pictureTrack_ = container_.addTrack([this](AVCodecParameters& track) { pictures_.describe(track); },
                                            {.num = 1, .den = settings.framesPerSecond});
        soundTrack_ = container_.addTrack([this](AVCodecParameters& track) { sound_.describe(track); },
                                          {.num = 1, .den = SoundEncoder::rate});
        container_.start();
    }

    bool waitUntilReady(Track track)
    {
        std::unique_lock lock(mutex_);
        const Progress& own = progress_[std::size_t(track)];
        const Progress& other = progress_[1 - std::size_t(track)];
        changed_.wait(lock, [&] { return reason_ || other.isFinished || own.seconds <= other.seconds + mostLead; });
        return !reason_;
    }

    bool append(VideoPicture& picture, const VideoPicture::Area& changed)
    {
        return attempt(Track::Picture, [&] {
            pictures_.append(picture, changed, toTrack(pictureTrack_));
            return double(pictures_.count()) / settings_.framesPerSecond;
        });
    }

    bool append(const SoundPlanes& planes)
    {
        return attempt(Track::Sound, [&] {
            sound_.append(planes, toTrack(soundTrack_));
            return double(sound_.count()) / settings_.sampleRate;
        });
    }

    void markAsFinished(Track track)
    {
        if (!hasFailed()) {
            attempt(track, [&] {
                if (track == Track::Picture)
                    pictures_.flush(toTrack(pictureTrack_));
                else
                    sound_.flush(toTrack(soundTrack_));
                return 0.0;
            });
        }
        const std::scoped_lock lock(mutex_);
        progress_[std::size_t(track)].isFinished = true;
        changed_.notify_all();
    }

    void fail(const QString& reason)
    {
        const std::scoped_lock lock(mutex_);
        if (!reason_)
            reason_ = reason;
        changed_.notify_all();
    }

    std::optional<QString> reason() const
    {
        const std::scoped_lock lock(mutex_);
        return reason_;
    }

    bool hasFailed() const { return reason().has_value(); }

    void finish() { container_.finish(); }

private:
    /// Seconds that one track may be ahead of the other.
    static constexpr double mostLead = 1.0;

    struct Progress
    {
        double seconds = 0.0;
        bool isFinished = false;
    };

    PacketSink toTrack(int track)
    {
        return [this, track](AVPacket& packet, AVRational timeBase) { container_.write(packet, timeBase, track); };
    }

    /// Does the work of a track, which tells how many seconds it holds then.
    template <typename Work>
    bool attempt(Track track, const Work& work)
    {
        try {
            const double seconds = work();
            const std::scoped_lock lock(mutex_);
            progress_[std::size_t(track)].seconds = seconds;
            changed_.notify_all();
            return !reason_;
        } catch (const VideoError& error) {
            fail(error.reason());
        } catch (const std::bad_alloc&) {
            fail(u"Cannot allocate memory"_s);
        }
        return false;
    }

    VideoSettings settings_;
    MovieContainer container_;
    PictureEncoder pictures_;
    SoundEncoder sound_;
    int pictureTrack_ = 0;
    int soundTrack_ = 0;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::array<Progress, 2> progress_;
    std::optional<QString> reason_;
};

VideoFile::VideoFile(const QString& finalPath, const QString& temporaryPath, const VideoSettings& settings)
    : writer_(std::make_unique<Writer>(finalPath, temporaryPath, settings))
{
}

VideoFile::~VideoFile() = default;

bool VideoFile::waitUntilReady(Track track)
{
    return writer_->waitUntilReady(track);
}

bool VideoFile::append(VideoPicture& picture, const VideoPicture::Area& changed)
{
    return writer_->append(picture, changed);
}

bool VideoFile::append(const SoundPlanes& planes)
{
    return writer_->append(planes);
}

void VideoFile::markAsFinished(Track track)
{
    writer_->markAsFinished(track);
}

void VideoFile::fail(const QString& reason)
{
    writer_->fail(reason);
}

bool VideoFile::hasFailed() const
{
    return writer_->hasFailed();
}

QString VideoFile::reason() const
{
    return writer_->reason().value_or(QString());
}

void VideoFile::finish()
{
    writer_->finish();
}

} // namespace orvane
