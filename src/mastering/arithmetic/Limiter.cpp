#include "mastering/arithmetic/Limiter.h"

#include "mastering/arithmetic/Decibels.h"
#include "mastering/arithmetic/SlidingMaximum.h"
#include "mastering/arithmetic/VectorClones.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <span>

namespace orvane::Master {

namespace {

constexpr std::size_t pieceLength = 4096;

/// Frames in so many seconds, truncated, at least one.
std::size_t framesIn(double seconds, double sampleRate)
{
    return std::max<std::size_t>(1, std::size_t(seconds * sampleRate));
}

ORVANE_VECTOR_CLONES
void raiseToMagnitudes(double* envelope, const double* samples, std::size_t count)
{
    for (std::size_t frame = 0; frame < count; ++frame) {
        const double magnitude = std::fabs(samples[frame]);
        envelope[frame] = envelope[frame] < magnitude ? magnitude : envelope[frame];
    }
}

ORVANE_VECTOR_CLONES
void applyGain(double* samples, const double* gains, std::size_t count, double ceiling)
{
    for (std::size_t frame = 0; frame < count; ++frame) {
        const double value = samples[frame] * gains[frame];
        const double held = value < -ceiling ? -ceiling : value;
        samples[frame] = held > ceiling ? ceiling : held;
    }
}

/// The gain at each frame, in order. It reads the signal one look-ahead in front of the frame asked for, so that the
/// samples behind may be changed meanwhile.
class GainCurve
{
public:
    GainCurve(const Channels& channels, double ceiling, double sampleRate)
        : channels_(channels)
        , frames_(channels.front().size())
        , ceiling_(ceiling)
        , lookAhead_(framesIn(0.005, sampleRate))
        , release_(std::exp2(-1.0 / double(framesIn(0.05, sampleRate))))
        , overshoots_(lookAhead_)
    {
    }

    double next()
    {
        readAhead();
        overshoots_.advanceTo(frame_);
        ++frame_;
        const double required = std::min(ceiling_ / overshoots_.largest(), 1.0);
        gain_ = required < gain_ ? required : std::min(gain_ / release_, 1.0);
        return gain_;
    }

private:
    void readAhead()
    {
        for (const std::size_t end = std::min(frame_ + lookAhead_, frames_); read_ < end; ++read_) {
            if (read_ % pieceLength == 0)
                readEnvelope();
            const double magnitude = envelope_[read_ % pieceLength];
            // Only what exceeds the ceiling asks for a gain, which in most signals is next to nothing.
            if (ceiling_ < magnitude)
                overshoots_.add(read_, magnitude);
        }
    }

    void readEnvelope()
    {
        envelope_.fill(0.0);
        const std::size_t count = std::min(pieceLength, frames_ - read_);
        for (const auto& channel : channels_)
            raiseToMagnitudes(envelope_.data(), channel.data() + read_, count);
    }

    const Channels& channels_;
    std::size_t frames_;
    double ceiling_;
    std::size_t lookAhead_;
    double release_;
    SlidingMaximum overshoots_;
    std::array<double, pieceLength> envelope_{};
    std::size_t read_ = 0;
    std::size_t frame_ = 0;
    double gain_ = 1.0;
};

} // namespace

void limit(Channels& channels, double ceiling, double sampleRate)
{
    if (isEmpty(channels))
        return;
    const std::size_t frames = channels.front().size();
    assert(
        std::all_of(channels.begin(), channels.end(), [&](const auto& channel) { return channel.size() >= frames; }));
    const double limit = linearGain(ceiling);
    GainCurve curve(channels, limit, sampleRate);
    std::array<double, pieceLength> gains;
    for (std::size_t start = 0; start < frames; start += pieceLength) {
        const std::size_t count = std::min(pieceLength, frames - start);
        std::generate_n(gains.begin(), count, [&] { return curve.next(); });
        for (auto& channel : channels)
            applyGain(channel.data() + start, gains.data(), count, limit);
    }
}

} // namespace orvane::Master
