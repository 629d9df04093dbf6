#include "video/VideoEngine.h"

#include "platform/filesystem/AtomicFile.h"
#include "platform/video/VideoError.h"
#include "platform/video/VideoFile.h"
#include "video/Artwork.h"
#include "video/FrameSequence.h"
#include "video/Rendering.h"

#include <QFile>
#include <QFileInfo>

#include <memory>
#include <new>
#include <thread>

namespace orvane {

using namespace Qt::Literals::StringLiterals;
using namespace Video;

namespace {

/// Whatever goes wrong in the writer, as the failure that it is.
template <typename Work>
auto written(const Work& work)
{
    try {
        return work();
    } catch (const VideoError& error) {
        throw Failure::writerFailed(error.reason());
    } catch (const FileError& error) {
        throw Failure::writerFailed(error.reason());
    } catch (const std::bad_alloc&) {
        throw Failure::writerFailed(u"Cannot allocate memory"_s);
    }
}

void removeFile(const QString& path)
{
    if (!QFileInfo(path).isDir() || QFileInfo(path).isSymLink())
        QFile::remove(path);
}

} // namespace

VideoEngine::VideoEngine(const QString& site)
    : painter_(site)
{
}

void VideoEngine::stop()
{
    const std::scoped_lock lock(lock_);
    stopping_ = true;
}

void VideoEngine::reset()
{
    const std::scoped_lock lock(lock_);
    stopping_ = false;
}

bool VideoEngine::isStopping() const
{
    const std::scoped_lock lock(lock_);
    return stopping_;
}

VideoSettings VideoEngine::settingsOf(const Look& look)
{
    const QSize frame = size(look.aspect);
    return {.width = frame.width(),
            .height = frame.height(),
            .framesPerSecond = look.fps,
            .bitRate = qint64(frame.width() * frame.height() * 0.11),
            .keyFrameInterval = look.fps * 2};
}

void VideoEngine::render(const QUrl& audio, const QUrl& artwork, const QString& title, const QString& artist,
                         const Look& look, const QUrl& output)
{
    const StopQuestion isStopped = [this] { return isStopping(); };
    const QString path = output.toLocalFile();
    const MonoSamples track = monoSamples(audio, isStopped);
    if (track.samples.empty() && !isStopping())
        throw Failure::unreadable(audio.fileName());
    const Scene scene{.artwork = readArtwork(artwork.toLocalFile()), .title = title, .artist = artist};
    removeFile(path);
    if (isStopping())
        throw Failure::cancelled();

    AudioReader sound = openSound(audio);
    VideoSettings settings = settingsOf(look);
    settings.sampleRate = sound.sampleRate();
    settings.channelCount = sound.channelCount();
    const auto file = written([&] { return std::make_unique<VideoFile>(path, temporarySibling(path), settings); });
    const auto frames = written([&] { return std::make_unique<FrameSequence>(painter_, scene, look); });
    {
        const std::jthread soundThread([&] { pumpSound(*file, sound, isStopped); });
        pumpPictures(*file, track, look.fps, *frames, isStopped, onProgress);
    }
    if (isStopping())
        throw Failure::cancelled();
    if (file->hasFailed())
        throw Failure::writerFailed(file->reason());
    written([&] { file->finish(); });
    if (onProgress)
        onProgress(1.0);
}

} // namespace orvane
