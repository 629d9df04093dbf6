#include "video/MonoSamples.h"

#include "platform/filesystem/FileError.h"
#include "platform/sound/AudioReader.h"
#include "platform/sound/SoundError.h"
#include "video/Failure.h"

#include <algorithm>
#include <functional>
#include <new>

namespace orvane::Video {

namespace {

/// Adds up the channels in the first of them.
void mixDown(SoundPlanes& planes)
{
    std::vector<float>& sum = planes.front();
    for (std::size_t channel = 1; channel < planes.size(); ++channel)
        std::transform(sum.begin(), sum.end(), planes[channel].begin(), sum.begin(), std::plus());
    if (planes.size() > 1) {
        for (float& sample : sum)
            sample /= float(planes.size());
    }
}

MonoSamples read(const QString& path, const std::function<bool()>& isStopping)
{
    AudioReader reader(path);
    MonoSamples mono{.samples = {}, .rate = reader.sampleRate()};
    mono.samples.reserve(std::size_t(reader.expectedFrames()));
    SoundPlanes block;
    while (!(isStopping && isStopping()) && reader.read(block)) {
        mixDown(block);
        mono.samples.insert(mono.samples.end(), block.front().begin(), block.front().end());
    }
    return mono;
}

} // namespace

MonoSamples monoSamples(const QUrl& url, const std::function<bool()>& isStopping)
{
    try {
        return read(url.toLocalFile(), isStopping);
    } catch (const FileError&) {
        throw Failure::unreadable(url.fileName());
    } catch (const SoundError&) {
        throw Failure::unreadable(url.fileName());
    } catch (const std::bad_alloc&) {
        throw Failure::unreadable(url.fileName());
    }
}

} // namespace orvane::Video
