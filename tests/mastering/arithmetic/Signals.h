#pragma once

#include "mastering/arithmetic/Channels.h"

#include <vector>

namespace orvane::test {

using Samples = std::vector<double>;

/// A sine of `level` dBFS peak, from the phase `degrees` on. `rate` in Hz.
Samples tone(double frequency, double level, double seconds, double rate, double degrees = 0.0);

/// A 1 kHz tone whose level changes: pairs of dBFS and seconds, one after the other, without a break in phase.
struct Part
{
    double level;
    double seconds;
};

Samples steps(const std::vector<Part>& parts, double rate);

/// Noise of a normal distribution with that deviation, from this run's seed and `stream`.
Samples noise(std::size_t frames, double deviation, unsigned stream = 0);

/// Something like music: a beat, a bass, a swelling chord and a pause, with peaks that lie between samples.
Channels music(double seconds, double rate, std::size_t channels = 2);

/// Three sections of a beat in dull noise, loud, quiet and between, of 12 s each.
Channels sections(double rate, std::size_t channels);

/// Silence.
Samples silence(std::size_t frames);

/// The samples turned up by so many dB.
Samples louder(Samples samples, double decibels);

/// Raised and lowered over a tenth of a second at either end.
Samples faded(Samples samples, double rate);

} // namespace orvane::test
