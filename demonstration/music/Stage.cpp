#include "demonstration/music/Stage.h"

#include <algorithm>

namespace orvane::demo {
namespace {

void mix(std::span<double> into, std::span<const double> sound, double gain)
{
    for (std::size_t index = 0; index < sound.size(); ++index)
        into[index] += gain * sound[index];
}

} // namespace

void Stage::add(std::span<const double> recording, std::size_t start, double gain, double place)
{
    if (start >= size())
        return;
    const std::span<const double> audible = recording.first(std::min(recording.size(), size() - start));
    mix(std::span(left).subspan(start, audible.size()), audible, gain * (1 - std::max(0.0, place)));
    mix(std::span(right).subspan(start, audible.size()), audible, gain * (1 + std::min(0.0, place)));
}

void Stage::add(const Stage& other, double gain)
{
    mix(left, other.left, gain);
    mix(right, other.right, gain);
}

} // namespace orvane::demo
