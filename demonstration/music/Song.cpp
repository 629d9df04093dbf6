#include "demonstration/music/Song.h"

#include "demonstration/music/Band.h"
#include "demonstration/music/Effects.h"

#include <algorithm>
#include <cmath>

namespace orvane::demo {
namespace {

constexpr double peak = 0.9;

/// The last second dies away, or the last third of a very short song.
void fadeOut(std::vector<double>& channel)
{
    const std::size_t length = std::min<std::size_t>(channel.size() / 3, sampleRate);
    for (std::size_t index = 0; index < length; ++index)
        channel[channel.size() - 1 - index] *= static_cast<double>(index) / static_cast<double>(length);
}

} // namespace

std::size_t sampleOf(const Song& song, double beat)
{
    return static_cast<std::size_t>(std::llround((song.leadIn + beat * 60 / song.bpm) * sampleRate));
}

std::vector<std::vector<double>> compose(const Song& song)
{
    Stage stage = Band(song).perform();
    fadeOut(stage.left);
    fadeOut(stage.right);
    finish(stage, peak);
    return {std::move(stage.left), std::move(stage.right)};
}

} // namespace orvane::demo
