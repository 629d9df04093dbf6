#include "mastering/arithmetic/Resample.h"

#include "mastering/arithmetic/Room.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace orvane::Master {

namespace {

constexpr std::size_t pieceLength = 4096;

/// Reads `samples` at the positions of what `result` has from `first` on, as far as there are samples.
void interpolate(const std::vector<double>& samples, double ratio, std::size_t first, std::vector<double>& result)
{
    for (std::size_t index = first; index < result.size(); ++index) {
        const double position = double(index) * ratio;
        const auto before = std::size_t(position);
        if (before + 1 >= samples.size())
            return;
        const double share = position - double(before);
        result[index] = (1.0 - share) * samples[before] + share * samples[before + 1];
    }
}

} // namespace

std::vector<double> resample(std::vector<double> samples, double ratio)
{
    if (!(ratio > 0.0) || !(std::abs(ratio - 1.0) > 0.0001) || samples.size() < 2)
        return samples;
    const double length = double(samples.size()) / ratio;
    if (!(length >= 2.0))
        return samples;
    const auto frames = static_cast<std::size_t>(length);
    std::vector<double> result;
    makeRoom(result, frames);
    GivingBack source(samples);
    while (result.size() < frames) {
        const std::size_t first = result.size();
        source.before(std::size_t(double(first) * ratio));
        result.resize(std::min(first + pieceLength, frames));
        interpolate(samples, ratio, first, result);
    }
    return result;
}

} // namespace orvane::Master
