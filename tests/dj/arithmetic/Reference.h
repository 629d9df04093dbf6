#pragma once

#include "mastering/arithmetic/Channels.h"

#include <cstddef>
#include <vector>

/// The definitions written down as plainly as they can be, with no regard for time: what the program's own arithmetic
/// is held against.
namespace orvane::test::Reference {

using Samples = std::vector<double>;

Samples mono(const Channels& channels);

Samples onsetEnvelope(const Samples& samples);

/// 0 where there is none.
std::size_t tempoLag(const Samples& envelope, double rate);
double tempo(const Samples& envelope, double rate);

struct Grid
{
    double bpm = 0.0;
    double phase = 0.0;
    int downbeat = 0;
    double cueIn = 0.0;
    /// Which of the 81 tempi was best, -40 to 40, and which of its offsets.
    int tempoStep = 0;
    int offsetStep = 0;
};

Grid grid(const Samples& envelope, double bpm, double rate);

struct Key
{
    int tonic = 0;
    bool isMinor = false;
};

/// Twelve sums, C first.
Samples chroma(const Samples& samples, double rate);
Key keyOf(const Samples& chroma);
Key key(const Samples& samples, double rate);

double energy(const Samples& samples);

} // namespace orvane::test::Reference
