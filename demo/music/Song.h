#pragma once

#include <vector>

namespace orvane::demo {

/// A piece of music that is composed from these facts alone: the same song sounds the same, sample for sample.
struct Song
{
    /// Beats a minute, constant from the first to the last sample. Range 40 to 220.
    double bpm = 120;
    /// Semitones above C of the key's tonic, 0 to 11.
    int tonic = 0;
    bool minor = false;
    /// Length, in seconds.
    double seconds = 30;
    /// Silence before beat 0, in seconds. Beat n begins at the sample round((leadIn + n * 60 / bpm) * sampleRate); a
    /// kick sounds on each, a bar has four.
    double leadIn = 0;
    unsigned seed = 1;
};

inline constexpr int sampleRate = 44100;

/// Two channels of samples, left and right, of one length, within -1 to 1.
std::vector<std::vector<double>> compose(const Song& song);

} // namespace orvane::demo
