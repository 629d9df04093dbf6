#pragma once

#include <span>

namespace orvane::DJ {

inline constexpr int beatsInBar = 4;

/// Where the beats of a track fall, at one tempo from end to end.
struct Grid
{
    /// Beats a minute.
    double bpm = 0.0;
    /// Seconds from the file's start to the grid's first beat.
    double phase = 0.0;
    /// Beats from `phase` to the first bar line, 0 to 3.
    int downbeat = 0;
    /// Seconds from the file's start to the first sound that can be heard setting in.
    double cueIn = 0.0;

    double beatSeconds() const { return 60.0 / bpm; }

    double barSeconds() const { return beatSeconds() * beatsInBar; }

    /// Seconds from the file's start to the first bar line at or after `cueIn`.
    double firstBar() const;

    bool operator==(const Grid&) const = default;
};

/// A row of evenly spaced teeth laid over an envelope, in envelope frames.
struct Comb
{
    double offset = 0.0;
    double period = 0.0;

    bool operator==(const Comb&) const = default;
};

/// Of all combs whose period is within 2 % of `period`, in steps of 0.05 %, the one under which the envelope is
/// highest. Of equally good ones the shortest period, then the smallest offset.
Comb bestComb(std::span<const double> envelope, double period);

/// The grid under an onset envelope of sound at `rate` Hz (above 0) that has about `bpm` beats a minute; its own tempo
/// is within 2 % of that. An envelope of fewer than 17 values, or a tempo that is not above 0, gives `bpm` and zeros.
Grid grid(std::span<const double> envelope, double bpm, double rate);

} // namespace orvane::DJ
