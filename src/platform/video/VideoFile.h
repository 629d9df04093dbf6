#pragma once

#include "platform/sound/AudioReader.h"
#include "platform/video/VideoPicture.h"
#include "platform/video/VideoSettings.h"

#include <QString>

#include <memory>

namespace orvane {

/// Writes a video file, MP4, with one track of pictures and one of sound. Each track is fed by one thread: wait until
/// it is ready, append, and so on; mark it as finished; when both are, finish the file. A track that runs ahead of the
/// other is not ready, so that little is held in memory. The file is whole under its final name once `finish`
/// returned, and absent, or what it was before, until then. A file that is destroyed unfinished is cancelled.
class VideoFile
{
public:
    enum class Track
    {
        Picture,
        Sound,
    };

    /// Both are absolute paths in one folder. Throws VideoError.
    VideoFile(const QString& finalPath, const QString& temporaryPath, const VideoSettings& settings);
    ~VideoFile();
    VideoFile(const VideoFile&) = delete;
    VideoFile& operator=(const VideoFile&) = delete;

    /// Waits until `track` can take more; false once the writing has failed.
    bool waitUntilReady(Track track);

    /// Appends the next picture, which may be changed afterwards and is the picture before outside `changed`; false
    /// once the writing has failed.
    bool append(VideoPicture& picture, const VideoPicture::Area& changed);

    /// Appends the next samples, with the channels that were set; false once the writing has failed.
    bool append(const SoundPlanes& planes);

    /// Nothing more comes on `track`. Called once for each, by its thread; the other is no longer held back by it.
    void markAsFinished(Track track);

    /// The writing fails for a reason that is not the file's own; the first reason stays.
    void fail(const QString& reason);

    bool hasFailed() const;

    /// What the encoder or the system said; empty where nothing failed.
    QString reason() const;

    /// Ends the file and moves it to its final name. After both tracks. Throws VideoError.
    void finish();

private:
    class Writer;
    std::unique_ptr<Writer> writer_;
};

} // namespace orvane
