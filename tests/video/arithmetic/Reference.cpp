#include "tests/video/arithmetic/Reference.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvane::test {

constexpr double pi = std::numbers::pi;

ReferenceAnalyser::ReferenceAnalyser(std::size_t fftSize, double smoothing)
    : fftSize_(fftSize)
    , smoothing_(smoothing)
    , previous_(fftSize / 2)
{
    for (std::size_t index = 0; index < fftSize; ++index) {
        cosine_.push_back(std::cos(2.0 * pi * double(index) / double(fftSize)));
        sine_.push_back(std::sin(2.0 * pi * double(index) / double(fftSize)));
    }
}

double ReferenceAnalyser::packedMagnitude(std::span<const double> windowed, std::size_t bin) const
{
    double real = 0.0;
    double imaginary = 0.0;
    for (std::size_t index = 0; index < windowed.size(); ++index) {
        real += windowed[index] * cosine_[index * bin % fftSize_];
        imaginary -= windowed[index] * sine_[index * bin % fftSize_];
    }
    if (bin == 0) {
        // The top frequency takes the place of the zero frequency's imaginary part.
        imaginary = 0.0;
        for (std::size_t index = 0; index < windowed.size(); ++index)
            imaginary += index % 2 == 0 ? windowed[index] : -windowed[index];
    }
    return 2.0 * std::hypot(real, imaginary);
}

std::vector<double> ReferenceAnalyser::magnitudes(std::span<const float> samples)
{
    std::vector<double> windowed(fftSize_);
    const auto last = double(fftSize_ - 1);
    for (std::size_t index = 0; index < std::min(samples.size(), fftSize_); ++index) {
        const auto i = double(index);
        const double window = 0.42 - 0.5 * std::cos(2.0 * pi * i / last) + 0.08 * std::cos(4.0 * pi * i / last);
        windowed[index] = double(samples[index]) * window;
    }
    std::vector<double> shown(fftSize_ / 2);
    for (std::size_t bin = 0; bin < shown.size(); ++bin) {
        const double magnitude = packedMagnitude(windowed, bin) / (2.0 * double(fftSize_));
        previous_[bin] = smoothing_ * previous_[bin] + (1.0 - smoothing_) * magnitude;
        const double decibels = 20.0 * std::log10(std::max(previous_[bin], 1e-9));
        shown[bin] = std::clamp((decibels + 100.0) / 70.0, 0.0, 1.0);
    }
    return shown;
}

} // namespace orvane::test
