#pragma once

#include <span>
#include <vector>

namespace orvane::test {

/// The rules of the spectrum, word for word in double precision, with the transform summed up term by term.
class ReferenceAnalyser
{
public:
    ReferenceAnalyser(std::size_t fftSize, double smoothing);

    /// The spectrum of the next frame.
    std::vector<double> magnitudes(std::span<const float> samples);

private:
    /// The value of one packed bin as the platform gives it: twice the mathematical one.
    double packedMagnitude(std::span<const double> windowed, std::size_t bin) const;

    std::size_t fftSize_;
    double smoothing_;
    std::vector<double> cosine_;
    std::vector<double> sine_;
    std::vector<double> previous_;
};

} // namespace orvane::test
