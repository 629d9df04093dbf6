#include "video/arithmetic/FrameGrid.h"

#include <algorithm>

namespace orvane::Video {

FrameGrid frameGrid(std::int64_t sampleCount, double rate, int framesPerSecond)
{
    const double duration = double(sampleCount) / rate;
    return {.samplesPerFrame = std::int64_t(rate / framesPerSecond),
            .frameCount = std::max<std::int64_t>(std::int64_t(duration * framesPerSecond), 1)};
}

std::span<const float> samplesOf(std::int64_t frame, const FrameGrid& grid, std::span<const float> samples,
                                 std::size_t most)
{
    const auto start = std::size_t(frame * grid.samplesPerFrame);
    if (start >= samples.size())
        return {};
    return samples.subspan(start, std::min(most, samples.size() - start));
}

} // namespace orvane::Video
