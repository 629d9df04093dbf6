#pragma once

#include "platform/sound/AudioReader.h"
#include "platform/video/VideoFile.h"
#include "video/FrameSequence.h"
#include "video/MonoSamples.h"

#include <QUrl>

#include <functional>

namespace orvane::Video {

/// Told how far a render is, from 0 to 1.
using ProgressCall = std::function<void(double)>;
/// Whether the user has stopped.
using StopQuestion = std::function<bool()>;

/// Opens the sound of `audio` for the second time. Throws Failure: NoAudioTrack.
AudioReader openSound(const QUrl& audio);

/// Feeds the pictures of a track to `file`, until there is no more, the writing fails or the user stops.
void pumpPictures(VideoFile& file, const MonoSamples& track, int framesPerSecond, FrameSequence& frames,
                  const StopQuestion& isStopping, const ProgressCall& onProgress);

/// Feeds the sound of a track to `file`, until there is no more, the writing fails or the user stops.
void pumpSound(VideoFile& file, AudioReader& reader, const StopQuestion& isStopping);

} // namespace orvane::Video
