#pragma once

#include "mastering/arithmetic/Biquad.h"
#include "mastering/arithmetic/TruePeak.h"
#include "mastering/arithmetic/WindowEnergy.h"

#include <cstddef>
#include <span>
#include <vector>

namespace orvane::Master {

/// Measures one channel, also while it is still growing: what it says at the end does not depend on the steps in which
/// it grew. The K-weighted samples are not kept.
class ChannelMeter
{
public:
    /// `sampleRate` in Hz; `counts` is whether loudness takes the channel in.
    ChannelMeter(double sampleRate, bool counts);

    /// Measures what has come since the last call. `samples` is all of the channel so far.
    void advance(std::span<const double> samples);

    /// Weighs what is left of the whole channel.
    void finishWeighing(std::span<const double> samples);
    /// Scans what is left of the whole channel for peaks.
    void finishScan(std::span<const double> samples);

    /// The mean squares of the gating blocks and of the short-term windows; none where the channel does not count.
    std::vector<double> blocks() const;
    std::vector<double> windows() const;

    const ChannelPeaks& peaks() const { return peaks_; }

private:
    void weigh(std::span<const double> samples);

    bool counts_;
    Biquad shelf_;
    Biquad highPass_;
    WindowEnergy blocks_;
    WindowEnergy windows_;
    std::size_t weighed_ = 0;
    PeakScan scan_;
    ChannelPeaks peaks_;
};

} // namespace orvane::Master
