#include "mastering/arithmetic/Stretch.h"

#include "mastering/arithmetic/Hann.h"
#include "mastering/arithmetic/Likeness.h"
#include "mastering/arithmetic/Resample.h"
#include "mastering/arithmetic/Room.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

namespace orvane::Master {

namespace {

constexpr std::size_t frame = 2048;
constexpr std::size_t outputHop = 1024;
constexpr std::size_t seek = 220;
constexpr std::size_t tooShort = 8192;
constexpr double leastChange = 0.0001;
constexpr double leastWeight = 0.0001;
constexpr double leastSemitones = 0.01;

static_assert((2 * seek) / Likeness::placeStep + 1 == Likeness::placeCount);

/// Where the search around `position` begins.
std::size_t firstPlace(std::size_t position)
{
    return position > seek ? position - seek : 0;
}

/// Where around `position` the samples are most like what is written; of equally good places the first.
std::size_t bestPlace(const std::vector<double>& samples, std::size_t position, const double* written)
{
    const std::size_t first = firstPlace(position);
    const std::size_t last = position + seek;
    const auto scores = Likeness::atEachPlace(written, samples.data() + first);
    std::size_t best = position;
    double highest = -std::numeric_limits<double>::infinity();
    for (std::size_t place = 0; first + place * Likeness::placeStep <= last; ++place) {
        if (scores[place] > highest) {
            highest = scores[place];
            best = first + place * Likeness::placeStep;
        }
    }
    return best;
}

/// Frames laid over one another, and how far they got.
struct Overlapped
{
    std::vector<double> sum;
    std::size_t end = 0;
};

/// The samples go as the sum comes.
Overlapped overlap(std::vector<double>& samples, std::size_t length, std::size_t inputHop,
                   const std::vector<double>& window)
{
    Overlapped result;
    makeRoom(result.sum, length);
    GivingBack source(samples);
    std::size_t position = 0;
    while (position + frame + seek < samples.size() && result.end + frame < length) {
        source.before(firstPlace(position));
        result.sum.resize(result.end + frame);
        double* written = result.sum.data() + result.end;
        const std::size_t best = result.end == 0 ? position : bestPlace(samples, position, written);
        for (std::size_t index = 0; index < frame; ++index)
            written[index] += samples[best + index] * window[index];
        position += inputHop;
        result.end += outputHop;
    }
    return result;
}

/// Takes the windows out again: at every place lie the second half of one frame and the first half of the next.
void normalise(std::vector<double>& sum, std::size_t end, const std::vector<double>& window)
{
    for (std::size_t index = 0; index < sum.size(); ++index) {
        const std::size_t within = index % outputHop;
        const double before = index >= outputHop && index < end + outputHop ? window[within + outputHop] : 0.0;
        const double weight = before + (index < end ? window[within] : 0.0);
        if (weight > leastWeight)
            sum[index] /= weight;
    }
}

} // namespace

std::vector<double> stretch(std::vector<double> samples, double ratio)
{
    const bool changes = ratio > 0.0 && std::isfinite(ratio) && std::abs(ratio - 1.0) > leastChange;
    if (!changes || samples.size() <= tooShort)
        return samples;
    const double inputHop = std::round(ratio * double(outputHop));
    if (inputHop < 1.0)
        return samples;
    const std::size_t length = std::size_t(double(samples.size()) / ratio) + frame;
    const auto step = std::size_t(std::min(inputHop, double(samples.size())));
    const std::vector<double> window = hannWindow(frame);
    Overlapped result = overlap(samples, length, step, window);
    result.sum.resize(std::min(length, result.end + outputHop));
    normalise(result.sum, result.end, window);
    return std::move(result.sum);
}

std::vector<double> pitchShift(std::vector<double> samples, double semitones)
{
    if (!(std::abs(semitones) > leastSemitones) || samples.size() <= tooShort)
        return samples;
    const double ratio = std::exp2(semitones / 12.0);
    return stretch(resample(std::move(samples), ratio), 1.0 / ratio);
}

} // namespace orvane::Master
