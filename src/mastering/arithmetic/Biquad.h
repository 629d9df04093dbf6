#pragma once

#include <span>
#include <vector>

namespace orvane::Master {

/// A second-order filter section in direct form I with its state; a0 is 1.
struct Biquad
{
    double b0 = 0.0;
    double b1 = 0.0;
    double b2 = 0.0;
    double a1 = 0.0;
    double a2 = 0.0;
    /// The last two inputs and outputs.
    double x1 = 0.0;
    double x2 = 0.0;
    double y1 = 0.0;
    double y2 = 0.0;

    /// The high shelf of the K-weighting (ITU-R BS.1770-4), for a sample rate in Hz.
    static Biquad kWeightingStage1(double sampleRate);
    /// The high pass of the K-weighting.
    static Biquad kWeightingStage2(double sampleRate);

    /// The filtered samples; consecutive calls go on with one signal.
    std::vector<double> process(std::span<const double> samples);
    /// Filters in place.
    void filter(std::span<double> samples);
    /// Forgets the signal so far.
    void reset();
};

/// Filters in place by `first` and then by `second`, as one after the other would, in less time.
void filterBy(Biquad& first, Biquad& second, std::span<double> samples);

} // namespace orvane::Master
