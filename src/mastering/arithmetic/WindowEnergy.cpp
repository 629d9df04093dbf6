#include "mastering/arithmetic/WindowEnergy.h"

#include "mastering/arithmetic/VectorClones.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace orvane::Master {

namespace {

ORVANE_VECTOR_CLONES
double sumOfSquares(const double* samples, std::size_t count)
{
    std::array<double, 16> sums{};
    std::size_t start = 0;
    for (; start + sums.size() <= count; start += sums.size()) {
        for (std::size_t lane = 0; lane < sums.size(); ++lane)
            sums[lane] += samples[start + lane] * samples[start + lane];
    }
    for (; start < count; ++start)
        sums[0] += samples[start] * samples[start];
    return std::accumulate(sums.begin(), sums.end(), 0.0);
}

std::size_t wholeFrames(double frames)
{
    return std::size_t(std::max(frames, 0.0));
}

} // namespace

Windows gatingBlocks(double sampleRate)
{
    const std::size_t length = wholeFrames(0.4 * sampleRate);
    return {.length = length, .hop = length / 4};
}

Windows shortTermWindows(double sampleRate)
{
    return {.length = wholeFrames(3.0 * sampleRate), .hop = wholeFrames(0.1 * sampleRate)};
}

std::size_t Windows::countIn(std::size_t frames) const
{
    return length < 1 || hop < 1 || frames < length ? 0 : (frames - length) / hop + 1;
}

WindowEnergy::WindowEnergy(Windows windows)
    : windows_(windows)
    , head_(windows.hop < 1 ? 0 : windows.length % windows.hop)
{
}

void WindowEnergy::add(std::span<const double> samples)
{
    if (windows_.hop < 1)
        return;
    while (!samples.empty()) {
        const std::size_t offset = frames_ % windows_.hop;
        const std::size_t border = offset < head_ ? head_ : windows_.hop;
        const std::size_t count = std::min(samples.size(), border - offset);
        addWithinPart(samples.first(count));
        samples = samples.subspan(count);
    }
}

void WindowEnergy::addWithinPart(std::span<const double> samples)
{
    const std::size_t offset = frames_ % windows_.hop;
    if (offset == 0) {
        hops_.push_back(0.0);
        heads_.push_back(0.0);
    }
    const double sum = sumOfSquares(samples.data(), samples.size());
    hops_.back() += sum;
    if (offset < head_)
        heads_.back() += sum;
    frames_ += samples.size();
}

std::vector<double> WindowEnergy::meanSquares() const
{
    const std::size_t wholeHops = windows_.hop < 1 ? 0 : windows_.length / windows_.hop;
    std::vector<double> means(windows_.countIn(frames_));
    for (std::size_t window = 0; window < means.size(); ++window) {
        const auto first = hops_.begin() + std::ptrdiff_t(window);
        double sum = std::accumulate(first, first + std::ptrdiff_t(wholeHops), 0.0);
        if (head_ > 0)
            sum += heads_[window + wholeHops];
        means[window] = sum / double(windows_.length);
    }
    return means;
}

} // namespace orvane::Master
