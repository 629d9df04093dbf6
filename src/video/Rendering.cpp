#include "video/Rendering.h"

#include "platform/filesystem/FileError.h"
#include "platform/sound/SoundError.h"
#include "video/Failure.h"
#include "video/arithmetic/Analyser.h"
#include "video/arithmetic/FrameGrid.h"

#include <new>

namespace orvane::Video {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::size_t fftSize = 1024;
constexpr float smoothing = 0.8F;
constexpr std::int64_t framesBetweenProgress = 15;

void paintAll(VideoFile& file, const MonoSamples& track, int framesPerSecond, FrameSequence& frames,
              const StopQuestion& isStopping, const ProgressCall& onProgress)
{
    const FrameGrid grid = frameGrid(std::int64_t(track.samples.size()), track.rate, framesPerSecond);
    Analyser analyser(fftSize, smoothing);
    for (std::int64_t frame = 0; frame < grid.frameCount;) {
        if (!file.waitUntilReady(VideoFile::Track::Picture) || isStopping())
            return;
        const auto spectrum = analyser.magnitudes(samplesOf(frame, grid, track.samples, fftSize));
        VideoPicture& picture = frames.next(spectrum);
        if (!file.append(picture, frames.changed()))
            return;
        if (++frame % framesBetweenProgress == 0 && onProgress)
            onProgress(double(frame) / double(grid.frameCount));
    }
}

/// False at the end of the sound; damage ends it too.
bool readOn(AudioReader& reader, SoundPlanes& block)
{
    try {
        return reader.read(block);
    } catch (const FileError&) {
        return false;
    } catch (const SoundError&) {
        return false;
    }
}

} // namespace

AudioReader openSound(const QUrl& audio)
{
    try {
        return AudioReader(audio.toLocalFile());
    } catch (const FileError&) {
        throw Failure::noAudioTrack(audio.fileName());
    } catch (const SoundError&) {
        throw Failure::noAudioTrack(audio.fileName());
    }
}

void pumpPictures(VideoFile& file, const MonoSamples& track, int framesPerSecond, FrameSequence& frames,
                  const StopQuestion& isStopping, const ProgressCall& onProgress)
{
    try {
        paintAll(file, track, framesPerSecond, frames, isStopping, onProgress);
    } catch (const std::bad_alloc&) {
        file.fail(u"Cannot allocate memory"_s);
    }
    file.markAsFinished(VideoFile::Track::Picture);
}

void pumpSound(VideoFile& file, AudioReader& reader, const StopQuestion& isStopping)
{
    SoundPlanes block;
    while (file.waitUntilReady(VideoFile::Track::Sound) && !isStopping() && readOn(reader, block) && file.append(block))
        ;
    file.markAsFinished(VideoFile::Track::Sound);
}

} // namespace orvane::Video
