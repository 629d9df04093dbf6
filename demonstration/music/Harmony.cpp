#include "demonstration/music/Harmony.h"

#include <cmath>
#include <cstdlib>

namespace orvane::demo {
namespace {

using Scale = std::array<int, 7>;
constexpr Scale majorScale{0, 2, 4, 5, 7, 9, 11};
constexpr Scale minorScale{0, 2, 3, 5, 7, 8, 10};

using Roots = std::array<int, 4>;
/// The tonic's chord stands in each twice or is led back to, so that the ear takes no relative key for the key.
constexpr std::array<Roots, 4> majorChords{{{0, 3, 0, 4}, {0, 5, 3, 4}, {0, 4, 3, 4}, {0, 3, 4, 0}}};
constexpr std::array<Roots, 4> minorChords{{{0, 3, 0, 4}, {0, 5, 3, 4}, {0, 5, 0, 4}, {0, 3, 4, 0}}};

int floorOfSevenths(int degree)
{
    return degree >= 0 ? degree / 7 : -((6 - degree) / 7);
}

} // namespace

Harmony::Harmony(const Song& song)
    : tonic_(song.tonic)
    , minor_(song.minor)
    , roots_((song.minor ? minorChords : majorChords)[(song.seed / 3) % 4])
{
}

int Harmony::rootOf(int bar) const
{
    return roots_[static_cast<std::size_t>(bar % 4)];
}

int Harmony::nearestInChord(int degree, int bar) const
{
    int nearest = rootOf(bar);
    for (int octave = -7; octave <= 14; octave += 7) {
        for (const int third : {0, 2, 4}) {
            const int tone = rootOf(bar) + third + octave;
            if (std::abs(tone - degree) < std::abs(nearest - degree))
                nearest = tone;
        }
    }
    return nearest;
}

double Harmony::hertz(int degree, double c) const
{
    const int octave = floorOfSevenths(degree);
    const int step = (minor_ ? minorScale : majorScale)[static_cast<std::size_t>(degree - 7 * octave)];
    return c * std::exp2((tonic_ + step + 12 * octave) / 12.0);
}

} // namespace orvane::demo
