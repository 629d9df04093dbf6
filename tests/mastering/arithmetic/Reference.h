#pragma once

#include "mastering/arithmetic/Channels.h"
#include "mastering/arithmetic/Reading.h"

#include <cstdint>
#include <vector>

/// The definitions written down as plainly as they can be, with no regard for time or memory: what the program's own
/// arithmetic is held against.
namespace orvane::test::Reference {

using Samples = std::vector<double>;

Samples kWeighted(const Samples& samples, double rate);

/// Loudness of each window of `length` frames, one every `hop`, of weighted channels.
Samples windowLoudness(const Channels& weighted, std::size_t length, std::size_t hop);

double integrated(const Samples& blocks);
double range(const Samples& shortTerm);

Samples oversampled(const Samples& samples);
double truePeak(const Samples& samples);

Master::Reading measure(const Channels& channels, double rate);

void limit(Channels& channels, double ceiling, double rate);

void apply(double target, double ceiling, Channels& channels, double rate);

Samples resample(const Samples& samples, double ratio);
Samples stretch(const Samples& samples, double ratio);
Samples pitchShift(const Samples& samples, int semitones);

Samples slidingMaximum(const Samples& values, std::size_t length);

/// The generator of the scattered hits: its number of `step`, 0 for the first.
double jitterUnit(std::int64_t seed, int step);

} // namespace orvane::test::Reference
