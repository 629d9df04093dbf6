#pragma once

#include "demonstration/music/Song.h"

#include <array>

namespace orvane::demo {

/// The chords of a song, and the tones of its key. A degree counts the steps of the scale from the tonic, 0; it may be
/// negative or go beyond an octave.
class Harmony
{
public:
    explicit Harmony(const Song& song);

    /// Root of the chord of a bar; the tonic in the first bar of four.
    int rootOf(int bar) const;
    /// The degree nearest to this one that is in the bar's chord.
    int nearestInChord(int degree, int bar) const;
    /// Frequency of a degree above the C of the given frequency.
    double hertz(int degree, double c) const;

private:
    int tonic_;
    bool minor_;
    std::array<int, 4> roots_;
};

} // namespace orvane::demo
