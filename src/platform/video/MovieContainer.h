#pragma once

#include "platform/sound/FileStream.h"
#include "platform/sound/Handle.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include <QString>

#include <functional>
#include <memory>
#include <mutex>

namespace orvane {

/// An MP4 file with its index in front of its data. It is written beside its final name and moved there when it is
/// whole; until then nothing is at the final name that was not there before. Packets may come from any thread.
class MovieContainer
{
public:
    /// Both are absolute paths in one folder. Throws VideoError.
    MovieContainer(QString finalPath, QString temporaryPath);
    /// Removes what was not finished.
    ~MovieContainer();
    MovieContainer(const MovieContainer&) = delete;
    MovieContainer& operator=(const MovieContainer&) = delete;

    /// Adds a track; returns its number. `describe` fills in what it is. Throws VideoError and what `describe` throws.
    int addTrack(const std::function<void(AVCodecParameters&)>& describe, AVRational timeBase);
    /// After the last track. Throws VideoError.
    void start();
    /// Takes the packet's content; its times are in `timeBase`. Throws VideoError.
    void write(AVPacket& packet, AVRational timeBase, int track);
    /// Ends the file and moves it to its final name. Throws VideoError. Called once, last.
    void finish();

private:
    void require(int code) const;
    void discard() noexcept;
    static int openAgain(AVFormatContext* container, AVIOContext** stream, const char* address, int flags,
                         AVDictionary** options);
    static int closeAgain(AVFormatContext* container, AVIOContext* stream);

    QString finalPath_;
    QString temporaryPath_;
    std::mutex mutex_;
    std::unique_ptr<FileStream> stream_;
    /// The same file, read while its data make room for the index.
    std::unique_ptr<FileStream> moved_;
    Handle<AVFormatContext, avformat_free_context> container_;
};

} // namespace orvane
