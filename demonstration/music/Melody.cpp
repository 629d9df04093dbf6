#include "demonstration/music/Melody.h"

#include "demonstration/music/Song.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace orvane::demo {
namespace {

/// Bars of eighths: a tone begins at each x and lasts until the next or the dot.
constexpr std::array<std::string_view, 8> rhythms{"x--x--x-", "x-xx--x.", "x--xx-x-", "x---x-xx",
                                                  "x-x-x---", ".xx-x-x-", "x--x-xx.", "x-xx-x--"};

double beatsFrom(std::string_view rhythm, std::size_t eighth)
{
    const std::size_t next = rhythm.find_first_not_of('-', eighth + 1);
    return 0.5 * static_cast<double>(std::min(next, rhythm.size()) - eighth);
}

bool isStrong(double beat)
{
    return beat == 0 || beat == 2;
}

} // namespace

Melody::Melody(std::mt19937& dice)
    : call_(think(dice, 4))
    , answer_(think(dice, 7))
{
}

Melody::Thought Melody::think(std::mt19937& dice, int from)
{
    // Small steps are likelier than leaps, and a leap is taken back by the bounds.
    static constexpr std::array<int, 8> steps{-1, 1, -1, 1, -2, 2, 0, 3};
    const std::string_view rhythm = rhythms[dice() % rhythms.size()];
    Thought thought;
    int degree = from;
    for (std::size_t eighth = 0; eighth < rhythm.size(); ++eighth) {
        if (rhythm[eighth] != 'x')
            continue;
        thought.tones.push_back(
            {.beat = 0.5 * static_cast<double>(eighth), .beats = beatsFrom(rhythm, eighth), .degree = degree});
        degree = std::clamp(degree + steps[dice() % steps.size()], 0, 9);
    }
    return thought;
}

std::vector<Tone> Melody::inBar(int bar, const Harmony& harmony) const
{
    std::vector<Tone> tones = bar % 2 == 0 ? call_.tones : answer_.tones;
    for (Tone& tone : tones) {
        if (isStrong(tone.beat))
            tone.degree = harmony.nearestInChord(tone.degree, bar);
    }
    const bool ends = bar % 4 == 3;
    if (ends)
        tones.back() = {.beat = tones.back().beat,
                        .beats = beatsInBar - tones.back().beat,
                        .degree = harmony.nearestInChord(tones.back().degree, bar)};
    return tones;
}

} // namespace orvane::demo
