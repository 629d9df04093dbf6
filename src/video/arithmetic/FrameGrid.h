#pragma once

#include <cstdint>
#include <span>

namespace orvane::Video {

/// Where in a track the frames of its video lie. Times are truncated: where the rate is no multiple of the frame rate,
/// the sound that is looked at falls behind the picture by the fraction that was cut, with each frame.
struct FrameGrid
{
    std::int64_t samplesPerFrame = 0;
    /// At least 1.
    std::int64_t frameCount = 1;

    bool operator==(const FrameGrid&) const = default;
};

/// The grid of `sampleCount` samples at `rate` Hz, for `framesPerSecond`, which is above 0.
FrameGrid frameGrid(std::int64_t sampleCount, double rate, int framesPerSecond);

/// The samples that `frame` looks at: from its own time on, `most` of them, fewer at the track's end and none past it.
std::span<const float> samplesOf(std::int64_t frame, const FrameGrid& grid, std::span<const float> samples,
                                 std::size_t most);

} // namespace orvane::Video
