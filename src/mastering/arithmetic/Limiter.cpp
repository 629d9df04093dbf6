#include "mastering/arithmetic/Limiter.h"

#include "mastering/arithmetic/Decibels.h"
#include "mastering/arithmetic/InParallel.h"
#include "mastering/arithmetic/Room.h"
#include "mastering/arithmetic/SlidingMaximum.h"
#include "mastering/arithmetic/VectorClones.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <deque>
#include <span>
#include <utility>
#include <vector>

namespace orvane::Master {

namespace {

constexpr std::size_t pieceLength = 4096;
/// What is limited at once, while the gain of the next is found.
constexpr std::size_t segmentLength = 16 * pieceLength;

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
void applyGain(double* limited, const double* samples, const double* gains, std::size_t count, double ceiling)
{
    for (std::size_t frame = 0; frame < count; ++frame) {
        const double value = samples[frame] * gains[frame];
        const double held = value < -ceiling ? -ceiling : value;
        limited[frame] = held > ceiling ? ceiling : held;
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
        , growth_(std::exp2(1.0 / double(framesIn(0.05, sampleRate))))
        , window_(lookAhead_)
    {
    }

    std::size_t framesLeft() const { return frames_ - frame_; }

    /// The gains of the next frames, as many as asked for or as there are.
    void next(std::vector<double>& gains, std::size_t wanted)
    {
        gains.resize(std::min(wanted, framesLeft()));
        for (std::span<double> left = gains; !left.empty();) {
            window_.advanceTo(frame_);
            lookAhead();
            const std::size_t count = std::min(left.size(), evenFrames());
            fill(left.first(count));
            frame_ += count;
            left = left.subspan(count);
        }
    }

private:
    /// A frame that exceeds the ceiling: in most signals next to nothing does.
    struct Overshoot
    {
        std::size_t frame;
        double magnitude;
    };

    /// Takes into the window what comes within one look-ahead.
    void lookAhead()
    {
        const std::size_t end = std::min(frame_ + lookAhead_, frames_);
        for (;;) {
            for (; taken_ < found_.size() && found_[taken_].frame < end; ++taken_)
                window_.add(found_[taken_].frame, found_[taken_].magnitude);
            if (read_ >= end)
                return;
            readPiece();
        }
    }

    /// Frames from here on for which the window stays as it is.
    std::size_t evenFrames() const
    {
        std::size_t end = frames_;
        if (taken_ < found_.size())
            end = found_[taken_].frame - lookAhead_ + 1;
        else if (read_ < frames_)
            end = read_ - lookAhead_ + 1;
        if (!window_.isEmpty())
            end = std::min(end, window_.largestIndex() + 1);
        return end - frame_;
    }

    void fill(std::span<double> gains)
    {
        const double required = window_.isEmpty() ? 1.0 : ceiling_ / window_.largest();
        double current = gain_;
        for (double& gain : gains) {
            current = required < current ? required : std::min(current * growth_, 1.0);
            gain = current;
        }
        gain_ = current;
    }

    void readPiece()
    {
        const std::size_t count = std::min(pieceLength, frames_ - read_);
        envelope_.fill(0.0);
        for (const auto& channel : channels_)
            raiseToMagnitudes(envelope_.data(), channel.data() + read_, count);
        found_.clear();
        taken_ = 0;
        for (std::size_t index = 0; index < count; ++index) {
            if (ceiling_ < envelope_[index])
                found_.push_back({.frame = read_ + index, .magnitude = envelope_[index]});
        }
        read_ += count;
    }

    const Channels& channels_;
    std::size_t frames_;
    double ceiling_;
    std::size_t lookAhead_;
    /// What the gain grows by from frame to frame while it is released.
    double growth_;
    SlidingMaximum window_;
    std::array<double, pieceLength> envelope_{};
    /// What exceeds the ceiling in the piece read last, and how much of it the window has taken.
    std::vector<Overshoot> found_;
    std::size_t taken_ = 0;
    std::size_t read_ = 0;
    std::size_t frame_ = 0;
    double gain_ = 1.0;
};

/// Calls `apply` with each channel and each segment's first frame and gains, one segment after the other, all channels
/// of a segment at once. What it does to the channel's segment the gain curve does not notice.
template <typename Apply>
void inSegments(const Channels& channels, double limit, double sampleRate, const Apply& apply)
{
    GainCurve curve(channels, limit, sampleRate);
    std::vector<double> gains;
    std::vector<double> coming;
    const auto findGains = [&] { curve.next(coming, segmentLength); };
    findGains();
    for (std::size_t start = 0; !coming.empty(); start += gains.size()) {
        std::swap(gains, coming);
        inParallel(1 + channels.size(), processorCount(), [&](std::size_t job) {
            if (job == 0)
                findGains();
            else
                apply(job - 1, start, std::span<const double>(gains));
        });
    }
}

/// Appends the segment, limited.
void appendLimited(std::vector<double>& limited, std::span<const double> samples, std::span<const double> gains,
                   double ceiling)
{
    std::array<double, pieceLength> piece;
    for (std::size_t start = 0; start < samples.size(); start += pieceLength) {
        const std::size_t count = std::min(pieceLength, samples.size() - start);
        applyGain(piece.data(), samples.data() + start, gains.data() + start, count, ceiling);
        limited.insert(limited.end(), piece.begin(), piece.begin() + std::ptrdiff_t(count));
    }
}

std::vector<double> withRoom(std::size_t frames)
{
    std::vector<double> channel;
    makeRoom(channel, frames);
    return channel;
}

/// A limited channel of which the peaks alone are wanted: it goes as it comes.
class Heard
{
public:
    explicit Heard(std::size_t frames)
        : limited_(withRoom(frames))
    {
    }

    Heard(const Heard&) = delete;
    Heard& operator=(const Heard&) = delete;

    void add(std::span<const double> samples, std::span<const double> gains, double ceiling)
    {
        appendLimited(limited_, samples, gains, ceiling);
        scan_.advance(limited_);
        going_.allBut(PeakScan::remembered);
    }

    ChannelPeaks finish() { return scan_.finish(limited_); }

private:
    std::vector<double> limited_;
    GivingBack going_{limited_, PeakScan::remembered};
    PeakScan scan_;
};

/// All channels end with the first.
[[maybe_unused]] bool reachTheFirst(const Channels& channels)
{
    const std::size_t frames = channels.front().size();
    return std::all_of(channels.begin(), channels.end(), [&](const auto& channel) { return channel.size() >= frames; });
}

} // namespace

void limit(Channels& channels, double ceiling, double sampleRate)
{
    if (isEmpty(channels))
        return;
    assert(reachTheFirst(channels));
    const double limit = linearGain(ceiling);
    inSegments(channels, limit, sampleRate, [&](std::size_t channel, std::size_t start, std::span<const double> gains) {
        double* samples = channels[channel].data() + start;
        applyGain(samples, samples, gains.data(), gains.size(), limit);
    });
}

Peaks peaksLimited(const Channels& channels, double ceiling, double sampleRate)
{
    if (isEmpty(channels))
        return {};
    assert(reachTheFirst(channels));
    const double limit = linearGain(ceiling);
    std::deque<Heard> heard;
    for (std::size_t channel = 0; channel < channels.size(); ++channel)
        heard.emplace_back(channels.front().size());
    inSegments(channels, limit, sampleRate, [&](std::size_t channel, std::size_t start, std::span<const double> gains) {
        heard[channel].add(std::span(channels[channel]).subspan(start, gains.size()), gains, limit);
    });
    std::vector<ChannelPeaks> peaks;
    for (Heard& channel : heard)
        peaks.push_back(channel.finish());
    return highestOf(peaks);
}

} // namespace orvane::Master
