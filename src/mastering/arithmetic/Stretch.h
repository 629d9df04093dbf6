#pragma once

#include <vector>

namespace orvane::Master {

/// The samples played at `ratio` times their speed at the same pitch, by overlapping frames that are shifted to where
/// their waveforms are most alike: above 1 they are fewer. The input as it is for a ratio that is not above 0, not
/// finite or within 0.0001 of 1, for 8192 samples or fewer, and where a frame would not move on. Takes about the memory
/// of the longer of the two, since the one goes as the other comes.
std::vector<double> stretch(std::vector<double> samples, double ratio);

/// The samples moved by so many semitones, up for a positive number, at about the same length. The input as it is for a
/// move of 0.01 and less, or 8192 samples or fewer. Takes memory as `stretch` does.
std::vector<double> pitchShift(std::vector<double> samples, double semitones);

} // namespace orvane::Master
