#include "video/arithmetic/Analyser.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <numbers>

namespace orvane::Video {

namespace {

const RealTransform& transformOf(std::size_t length)
{
    const RealTransform* transform = RealTransform::ofLength(length);
    if (transform == nullptr)
        std::terminate();
    return *transform;
}

/// A symmetric Blackman window.
std::vector<float> blackman(std::size_t length)
{
    std::vector<float> window(length);
    for (std::size_t index = 0; index < length; ++index) {
        const double angle = 2.0 * std::numbers::pi * double(index) / double(length - 1);
        window[index] = float(0.42 - 0.5 * std::cos(angle) + 0.08 * std::cos(2.0 * angle));
    }
    return window;
}

float shown(float magnitude)
{
    constexpr float floor = 1e-9F;
    const float decibels = 20.0F * std::log10(std::max(magnitude, floor));
    return std::clamp((decibels + 100.0F) / 70.0F, 0.0F, 1.0F);
}

} // namespace

Analyser::Analyser(std::size_t fftSize, float smoothing)
    : smoothing_(smoothing)
    , transform_(transformOf(fftSize))
    , room_(transform_)
    , window_(blackman(fftSize))
    , previous_(fftSize / 2)
    , shown_(fftSize / 2)
{
}

std::span<const float> Analyser::magnitudes(std::span<const float> samples)
{
    const std::span<double> windowed = room_.samples();
    const std::size_t count = std::min(samples.size(), window_.size());
    for (std::size_t index = 0; index < count; ++index)
        windowed[index] = samples[index] * window_[index];
    std::fill(windowed.begin() + std::ptrdiff_t(count), windowed.end(), 0.0);
    transform_.run(room_);
    smooth(room_.bins());
    std::transform(previous_.begin(), previous_.end(), shown_.begin(), shown);
    return shown_;
}

void Analyser::smooth(std::span<const std::complex<double>> bins)
{
    // The scale of the display is 1 / (2 N) of a transform that gives twice the mathematical values; ours gives them
    // once.
    const double scale = 1.0 / double(window_.size());
    for (std::size_t bin = 0; bin < previous_.size(); ++bin) {
        const double power = std::norm(bins[bin]);
        const auto magnitude = float(std::sqrt(power) * scale);
        previous_[bin] = smoothing_ * previous_[bin] + (1.0F - smoothing_) * magnitude;
    }
}

} // namespace orvane::Video
