#include "dj/arithmetic/KeyFinder.h"

#include "mastering/arithmetic/Hann.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numeric>
#include <vector>

namespace orvane::DJ {

namespace {

constexpr double lowest = 55.0;
constexpr double highest = 2000.0;
constexpr double concertPitch = 440.0;
constexpr int noteOfConcertPitch = 69;
constexpr double secondsBetweenFrames = 0.5;

constexpr Chroma majorProfile{6.35, 2.23, 3.48, 2.33, 4.38, 4.09, 2.52, 5.19, 2.39, 3.66, 2.29, 2.88};
constexpr Chroma minorProfile{6.33, 2.68, 3.52, 5.38, 2.60, 3.53, 2.54, 4.75, 3.98, 2.69, 3.34, 3.17};

/// A bin of the spectrum whose pitch counts, and that pitch's class.
struct PitchBin
{
    std::size_t bin;
    std::size_t pitchClass;
};

std::vector<PitchBin> pitchBins(double rate)
{
    std::vector<PitchBin> bins;
    for (std::size_t bin = 1; bin < keyWindow / 2; ++bin) {
        const double frequency = double(bin) * rate / double(keyWindow);
        if (frequency > lowest && frequency < highest) {
            const double note = 12.0 * std::log2(frequency / concertPitch) + noteOfConcertPitch;
            bins.push_back({.bin = bin, .pitchClass = std::size_t(std::lround(note)) % 12});
        }
    }
    return bins;
}

double likeness(const Chroma& profile, const Chroma& chroma, std::size_t tonic)
{
    double sum = 0.0;
    for (std::size_t step = 0; step < chroma.size(); ++step)
        sum += profile[step] * chroma[(tonic + step) % chroma.size()];
    return sum;
}

} // namespace

Chroma chromaOf(std::span<const double> samples, double rate, const RealTransform* transform)
{
    Chroma chroma = {};
    if (transform == nullptr)
        return chroma;
    const std::vector<PitchBin> bins = pitchBins(rate);
    const std::vector<double> window = hannWindow(keyWindow);
    const std::size_t step = std::max(std::size_t(rate * secondsBetweenFrames), keyWindow);
    RealTransform::Room room(*transform);
    for (std::size_t start = 0; start + keyWindow <= samples.size(); start += step) {
        std::transform(window.begin(), window.end(), samples.data() + start, room.samples().begin(), std::multiplies());
        transform->run(room);
        for (const PitchBin& pitch : bins) {
            const std::complex<double> value = room.bins()[pitch.bin];
            chroma[pitch.pitchClass] += std::sqrt(value.real() * value.real() + value.imag() * value.imag());
        }
    }
    return chroma;
}

Key keyOf(const Chroma& chroma)
{
    const double total = std::accumulate(chroma.begin(), chroma.end(), 0.0);
    if (!(total > 0.0))
        return {};
    Chroma shares = chroma;
    for (double& share : shares)
        share /= total;
    Key best;
    double highestScore = -std::numeric_limits<double>::infinity();
    for (int tonic = 0; tonic < int(shares.size()); ++tonic) {
        for (const bool isMinor : {false, true}) {
            const double score = likeness(isMinor ? minorProfile : majorProfile, shares, std::size_t(tonic));
            if (score > highestScore) {
                highestScore = score;
                best = {.tonic = tonic, .isMinor = isMinor};
            }
        }
    }
    return best;
}

Key key(std::span<const double> samples, double rate)
{
    return keyOf(chromaOf(samples, rate, RealTransform::ofLength(keyWindow)));
}

} // namespace orvane::DJ
