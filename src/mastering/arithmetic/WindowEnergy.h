#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace orvane::Master {

/// Windows of one length that start every hop, in frames.
struct Windows
{
    std::size_t length = 0;
    std::size_t hop = 0;

    /// How many whole windows fit into so many frames; 0 where length or hop is 0.
    std::size_t countIn(std::size_t frames) const;
};

/// The blocks of 400 ms that integrated loudness is gated by, three quarters of each in the next. `sampleRate` in Hz.
Windows gatingBlocks(double sampleRate);

/// The windows of 3 s, every 100 ms, of short-term loudness.
Windows shortTermWindows(double sampleRate);

/// The mean squares of a channel's windows, gathered while its samples pass: each sample is added up once, however many
/// windows it lies in.
class WindowEnergy
{
public:
    explicit WindowEnergy(Windows windows);

    /// Takes the channel's next samples.
    void add(std::span<const double> samples);

    /// The mean of the squares of every whole window so far, in order.
    std::vector<double> meanSquares() const;

private:
    void addWithinPart(std::span<const double> samples);

    Windows windows_;
    /// What a window has over a whole number of hops.
    std::size_t head_;
    /// For each hop the squares of all of it, and those of its first `head_` frames.
    std::vector<double> hops_;
    std::vector<double> heads_;
    std::size_t frames_ = 0;
};

} // namespace orvane::Master
