#pragma once

#include "mastering/arithmetic/Channels.h"
#include "mastering/arithmetic/Resample.h"

#include <cstdint>
#include <optional>

namespace orvane::DJ {

using Master::resample;

/// What is done to a track before it goes into a mix.
struct Conforming
{
    /// How many times as fast it is played; 1 is as it is.
    double ratio = 1.0;
    /// Whether it keeps its pitch then.
    bool keepsPitch = true;
    /// The loudness it is brought to, in LUFS.
    std::optional<double> level;
    /// By how many semitones it is moved after that; up for a positive number.
    int semitones = 0;
    /// Frames at the mix's rate that are dropped from its start, where more than `leastRest` stay.
    std::int64_t intro = 0;
    std::int64_t leastRest = 0;

    bool operator==(const Conforming&) const = default;
};

/// The track at `rate` Hz as two channels at the mix's rate, with all that done to it in this order. One channel serves
/// as both, and of more than two the first two stay; of none there is nothing. Works on as many threads as there are
/// processors, and takes little more memory than the track itself.
Channels conform(Channels track, double rate, const Conforming& how);

} // namespace orvane::DJ
