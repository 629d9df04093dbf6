#pragma once

#include "mastering/arithmetic/Channels.h"

#include <array>
#include <span>
#include <vector>

namespace orvane::Master {

/// The taps of the fourfold oversampler: a sinc that is cut off at the input's Nyquist frequency, under a Blackman
/// window, with a sum of 4.
const std::array<double, 129>& oversamplingTaps();

/// The signal at four times its rate: 4 n values, of which value k stands for the input position (k + 64) / 4. The last
/// 129 are 0, and all are for fewer than 33 samples.
std::vector<double> oversample4x(std::span<const double> samples);

/// The largest magnitude of the oversampled channel. A channel of fewer than 33 samples cannot be oversampled: its
/// largest sample magnitude stands in. 0 for an empty one.
double scanTruePeak(std::span<const double> samples);

/// The larger of `floor` and `scanTruePeak`; the higher the floor, the less there is to look at.
double truePeakAbove(std::span<const double> samples, double floor);

/// The largest magnitude of any sample; 0 for none.
double largestMagnitude(std::span<const double> samples);

/// The signal's true peak in dBTP: of the oversampled channels or of the samples, whichever is higher. Minus infinity
/// for silence.
double peakDB(const Channels& channels, double sampleRate);

/// The largest magnitude of any sample of any channel.
double largestMagnitude(const Channels& channels);

/// The sample peak in dBFS; minus infinity for silence.
double samplePeakDB(const Channels& channels);

} // namespace orvane::Master
