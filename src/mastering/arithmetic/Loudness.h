#pragma once

#include "mastering/arithmetic/ChannelMeter.h"
#include "mastering/arithmetic/Channels.h"
#include "mastering/arithmetic/Reading.h"
#include "mastering/arithmetic/TruePeak.h"

#include <span>
#include <vector>

namespace orvane::Master {

/// What channel `channel` of `count` counts for in loudness, by number and not by any layout: surrounds 1.41, the LFE
/// of six and more channels 0, all others 1.
double weight(std::size_t channel, std::size_t count);

/// Loudness in LUFS of a weighted sum of mean squares; minus infinity for 0.
double loudnessOfEnergy(double energy);

/// Integrated loudness in LUFS of the loudnesses of 400 ms blocks: gated at -70 LUFS, which itself is dropped, then at
/// 10 LU under the mean of what is left (ITU-R BS.1770-4). Minus infinity when nothing passes.
double gatedLoudness(std::span<const double> blocks);

/// Loudness in LUFS of each window of 3 s, every 100 ms, of channels that have been K-weighted. `sampleRate` in Hz.
/// Empty where no whole window fits.
std::vector<double> shortTerm(const Channels& weighted, double sampleRate);

/// Loudness range in LU of short-term loudnesses (EBU Tech 3342): gated at -70 LUFS, which itself is kept, and at 20 LU
/// under the mean; from the 10th to the 95th percentile by nearest rank. 0 for fewer than two values.
double loudnessRange(std::span<const double> shortTermLoudness);

/// The whole reading of a signal at `sampleRate` Hz. Every channel is at least as long as the first. Never fails: what
/// cannot exist is minus infinity, or 0 for the range. Works on as many threads as there are processors.
Reading measure(const Channels& channels, double sampleRate);

/// How many threads an operation may use; one keeps it on the caller's.
enum class Threads
{
    One,
    All,
};

Reading measure(const Channels& channels, double sampleRate, Threads threads);

/// The integrated loudness of `measure` alone, for less than half of its time.
double integratedLoudness(const Channels& channels, double sampleRate);

/// As `measure`, for a signal whose peaks have just been measured.
Reading measureBeside(const Peaks& peaks, const Channels& channels, double sampleRate);

/// A meter for each of `count` channels of a signal that is to come.
std::vector<ChannelMeter> metersFor(std::size_t count, double sampleRate);

/// The reading of a signal, of which its meters have measured any part while it came.
Reading finish(std::vector<ChannelMeter>& meters, const Channels& channels, Threads threads = Threads::All);

} // namespace orvane::Master
