#pragma once

#include "platform/transform/RealTransform.h"

#include <cstddef>
#include <span>
#include <vector>

namespace orvane::Video {

/// The spectrum of a track as the eye takes it: one for each frame of a video, smoothed from frame to frame. It shows
/// and does not measure. It remembers the frame before, so that frames are analysed in order. One thread at a time.
class Analyser
{
public:
    /// `fftSize` is the window's length in samples, a power of two; `smoothing` the weight of the frame before, from 0
    /// to 1. A transform that cannot be set up ends the program.
    Analyser(std::size_t fftSize, float smoothing);

    std::size_t fftSize() const { return window_.size(); }

    float smoothing() const { return smoothing_; }

    /// The smoothed linear magnitudes of the latest frame, half as many as the window is long; 0 at the start.
    std::span<const float> previous() const { return previous_; }

    /// The spectrum of the next frame, of which `samples` are the first `fftSize` at most: zeros stand for what is
    /// missing. As many values as `previous` has, from 0 at -100 dB to 1 at -30 dB. Good until the next call.
    std::span<const float> magnitudes(std::span<const float> samples);

private:
    void smooth(std::span<const std::complex<double>> bins);

    float smoothing_;
    const RealTransform& transform_;
    RealTransform::Room room_;
    std::vector<float> window_;
    std::vector<float> previous_;
    std::vector<float> shown_;
};

} // namespace orvane::Video
