#pragma once

#include <cstddef>
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
    /// Silence before beat 0, in seconds.
    double leadIn = 0;
    unsigned seed = 1;
};

inline constexpr int sampleRate = 44100;
inline constexpr int beatsInBar = 4;

/// The sample at which a beat of the song begins: round((leadIn + beat * 60 / bpm) * sampleRate). Beat 0 is the first
/// of the first bar. A kick begins there on every beat, but in the break only on the first of a bar.
std::size_t sampleOf(const Song& song, double beat);

/// Two channels of samples, left and right, of one length, within -1 to 1. The song begins quietly, has its full sound
/// in the middle, with a break in it, and ends on the tonic.
std::vector<std::vector<double>> compose(const Song& song);

} // namespace orvane::demo
