#include "dj/arithmetic/Fades.h"

#include "dj/arithmetic/Cuts.h"

#include <algorithm>
#include <cstddef>

namespace orvane::DJ {

namespace {

constexpr std::size_t fewestFrames = 2;

/// Multiplies each of the first `frames` frames by what `gainAt` gives for how far it is on the way, from 0 to 1.
template <typename Gain>
void shape(Channels& channels, std::size_t frames, Gain gainAt)
{
    if (frames < fewestFrames)
        return;
    for (auto& channel : channels) {
        for (std::size_t frame = 0; frame < frames; ++frame)
            channel[frame] *= gainAt(double(frame) / double(frames));
    }
}

} // namespace

void fadeIn(Channels& channels, double seconds, double rate)
{
    if (isEmpty(channels))
        return;
    const auto wanted = std::size_t(std::max<std::int64_t>(wholeFrames(seconds * rate), 0));
    shape(channels, std::min(channels.front().size(), wanted), [](double way) { return way; });
}

void fadeOut(Channels& channels, double)
{
    if (!isEmpty(channels))
        shape(channels, channels.front().size(), [](double way) { return 1.0 - way; });
}

} // namespace orvane::DJ
