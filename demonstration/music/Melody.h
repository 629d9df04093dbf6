#pragma once

#include "demonstration/music/Harmony.h"

#include <random>
#include <vector>

namespace orvane::demo {

/// A tone of the tune.
struct Tone
{
    /// Counted from the phrase's first beat.
    double beat = 0;
    double beats = 0.5;
    /// Step of the scale, as in Harmony.
    int degree = 0;
};

/// A tune of four bars: a thought, its answer, the thought again, and an ending.
class Melody
{
public:
    explicit Melody(std::mt19937& dice);

    /// The tones of a bar over the chord it has.
    std::vector<Tone> inBar(int bar, const Harmony& harmony) const;

private:
    struct Thought
    {
        std::vector<Tone> tones;
    };

    static Thought think(std::mt19937& dice, int from);

    Thought call_;
    Thought answer_;
};

} // namespace orvane::demo
