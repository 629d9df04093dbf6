#pragma once

#include "mastering/arithmetic/Channels.h"
#include "mastering/arithmetic/Reading.h"

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace orvane::Master {

/// The taps of the fourfold oversampler: a sinc that is cut off at the input's Nyquist frequency, under a Blackman
/// window, with a sum of 4.
const std::array<double, 129>& oversamplingTaps();

/// The signal at four times its rate: 4 n values, of which value k stands for the input position (k + 64) / 4. The last
/// 129 are 0, and all are for fewer than 33 samples.
std::vector<double> oversample4x(std::span<const double> samples);

/// A channel's two peaks, as magnitudes; 0 for an empty one.
struct ChannelPeaks
{
    /// The largest magnitude of any sample.
    double sample = 0.0;
    /// The largest magnitude of the oversampled channel.
    double oversampled = 0.0;
};

/// Finds both peaks of a channel, also of one that is still growing. A channel of fewer than 33 samples cannot be
/// oversampled: its sample peak stands in.
class PeakScan
{
public:
    /// Of what it has looked at, only the first and the last so many samples are looked at again.
    static constexpr std::size_t remembered = 64;

    /// Looks at what has come since the last call. `samples` is all of the channel so far.
    void advance(std::span<const double> samples);

    /// The peaks of the whole channel, of which any part may have been looked at before.
    ChannelPeaks finish(std::span<const double> samples);

private:
    void scanBetween(std::span<const double> samples);

    /// The largest magnitude of each whole block so far.
    std::vector<double> blocks_;
    /// Blocks behind whose samples has been looked, and the largest of what was found there.
    std::size_t scanned_ = 0;
    double largest_ = 0.0;
};

/// Both peaks of a whole channel.
ChannelPeaks scanPeaks(std::span<const double> samples);

/// The largest magnitude of the oversampled channel, as `scanPeaks` gives it.
double scanTruePeak(std::span<const double> samples);

/// The largest magnitude of any sample; 0 for none.
double largestMagnitude(std::span<const double> samples);

/// The largest magnitude of any sample of any channel.
double largestMagnitude(const Channels& channels);

/// A signal's two peaks in dB; minus infinity for silence.
struct Peaks
{
    /// Of the oversampled channels or of the samples, whichever is higher.
    double truePeak = minusInfinity;
    double samplePeak = minusInfinity;

    bool operator==(const Peaks&) const = default;
};

/// Of the channels' own peaks the highest.
Peaks highestOf(std::span<const ChannelPeaks> channels);

/// The peaks of a signal, by as many threads as there are processors.
Peaks peaksOf(const Channels& channels);

/// The signal's true peak in dBTP, as `peaksOf` gives it.
double peakDB(const Channels& channels, double sampleRate);

/// The sample peak in dBFS; minus infinity for silence.
double samplePeakDB(const Channels& channels);

} // namespace orvane::Master
