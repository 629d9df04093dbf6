#include "mastering/arithmetic/ChannelMeter.h"

#include <algorithm>
#include <array>

namespace orvane::Master {

namespace {

/// Sums depend on where they are broken off, so that they always are at multiples of this.
constexpr std::size_t pieceLength = 1024;

} // namespace

ChannelMeter::ChannelMeter(double sampleRate, bool counts)
    : counts_(counts)
    , shelf_(Biquad::kWeightingStage1(sampleRate))
    , highPass_(Biquad::kWeightingStage2(sampleRate))
    , blocks_(gatingBlocks(sampleRate))
    , windows_(shortTermWindows(sampleRate))
{
}

void ChannelMeter::advance(std::span<const double> samples)
{
    weigh(samples.first(samples.size() / pieceLength * pieceLength));
    scan_.advance(samples);
}

void ChannelMeter::finishWeighing(std::span<const double> samples)
{
    weigh(samples);
}

void ChannelMeter::finishScan(std::span<const double> samples)
{
    peaks_ = scan_.finish(samples);
}

void ChannelMeter::weigh(std::span<const double> samples)
{
    std::array<double, pieceLength> piece;
    while (counts_ && weighed_ < samples.size()) {
        const std::span<double> weighted(piece.data(), std::min(pieceLength, samples.size() - weighed_));
        std::copy_n(samples.data() + weighed_, weighted.size(), weighted.begin());
        filterBy(shelf_, highPass_, weighted);
        blocks_.add(weighted);
        windows_.add(weighted);
        weighed_ += weighted.size();
    }
}

std::vector<double> ChannelMeter::blocks() const
{
    return counts_ ? blocks_.meanSquares() : std::vector<double>();
}

std::vector<double> ChannelMeter::windows() const
{
    return counts_ ? windows_.meanSquares() : std::vector<double>();
}

} // namespace orvane::Master
