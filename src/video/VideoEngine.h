#pragma once

#include "platform/video/VideoSettings.h"
#include "video/Failure.h"
#include "video/FramePainter.h"
#include "video/Look.h"
#include "video/MonoSamples.h"
#include "video/Palette.h"
#include "video/arithmetic/Analyser.h"

#include <QUrl>

#include <functional>
#include <mutex>

namespace orvane {

/// Renders a track into an MP4: bars, glow, artwork and titles, with the track as its sound. It needs no window, but
/// fonts, and so a QGuiApplication. One render at a time, on a thread of the caller's.
class VideoEngine
{
public:
    using Analyser = Video::Analyser;
    using Failure = Video::Failure;
    using Look = Video::Look;
    using Palette = Video::Palette;

    /// `site` is the product site's name, such as "name.example", for the pill.
    explicit VideoEngine(const QString& site);

    /// Told how far a render is, from 0 to 1: every 15 frames, and exactly 1 once the file is there. Called on the
    /// thread that renders.
    std::function<void(double)> onProgress;

    /// Writes the video of the sound file `audio` to `output`, and returns when that is complete. What was at `output`
    /// is removed before. `artwork` may be empty, and where it holds no picture the video goes on without one. Throws
    /// Failure; then no file is at `output`, but for Unreadable, which is found out before anything is removed.
    void render(const QUrl& audio, const QUrl& artwork, const QString& title, const QString& artist, const Look& look,
                const QUrl& output);

    /// Ends the render that runs, and every later one until `reset`. Any thread.
    void stop();
    /// Called before a run. Any thread.
    void reset();
    bool isStopping() const;

    /// How the file of a look is made: width x height x 0.11 bit/s, a key frame every two seconds.
    static VideoSettings settingsOf(const Look& look);

private:
    Video::FramePainter painter_;
    mutable std::mutex lock_;
    bool stopping_ = false;
};

} // namespace orvane
