#pragma once

#include "demonstration/music/Stage.h"

#include <cstddef>

namespace orvane::demo {

/// Where, how high and how loud a note sounds.
struct Note
{
    std::size_t start = 0;
    double seconds = 0.2;
    double hertz = 440;
    double gain = 0.2;
    double place = 0;
};

/// What an instrument sounds like: two oscillators a little apart, through a filter that closes after the stroke.
struct Voice
{
    enum class Wave
    {
        warm,
        hollow,
        bell
    };

    Wave wave = Wave::warm;
    /// Seconds to full level, and from the note's end to silence.
    double attack = 0.005;
    double release = 0.05;
    /// Level that is held, and how fast the stroke falls to it, in falls by e a second.
    double sustain = 0.5;
    double decay = 6;
    /// Distance of the two oscillators, in cents, and how far left and right they stand, 0 to 1.
    double detune = 6;
    double width = 0;
    /// Where the filter opens to at the stroke and closes to, in Hz.
    double bright = 6000;
    double dark = 1500;
};

void play(Stage& stage, const Note& note, const Voice& voice);

} // namespace orvane::demo
