#include "dj/arithmetic/Grid.h"

#include "dj/arithmetic/OnsetEnvelope.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

namespace orvane::DJ {

namespace {

constexpr std::size_t tooShort = 17;
constexpr int tempoSteps = 40;
constexpr double tempoStep = 0.0005;
constexpr double shortestPeriod = 2.0;
constexpr int offsetsAFrame = 4;
constexpr int fewestOffsets = 16;
constexpr double audibleShare = 0.1;

/// The envelope at a position between its first value and its last.
double valueAt(std::span<const double> envelope, double position)
{
    const auto index = std::size_t(position);
    const double fraction = position - double(index);
    return (1.0 - fraction) * envelope[index] + fraction * envelope[index + 1];
}

double sumUnder(std::span<const double> envelope, const Comb& comb)
{
    const auto last = double(envelope.size() - 1);
    double sum = 0.0;
    for (double position = comb.offset; position < last; position += comb.period)
        sum += valueAt(envelope, position);
    return sum;
}

int downbeatOf(std::span<const double> envelope, const Comb& comb)
{
    const auto last = double(envelope.size() - 1);
    std::array<double, beatsInBar> sums = {};
    std::size_t beat = 0;
    for (double position = comb.offset; position < last; position += comb.period)
        sums[beat++ % sums.size()] += valueAt(envelope, position);
    return int(std::max_element(sums.begin(), sums.end()) - sums.begin());
}

/// The first frame that is above a tenth of the highest.
std::size_t firstAudible(std::span<const double> envelope)
{
    const double peak = *std::max_element(envelope.begin(), envelope.end());
    const auto found =
        std::find_if(envelope.begin(), envelope.end(), [peak](double value) { return value > audibleShare * peak; });
    return peak > 0.0 && found != envelope.end() ? std::size_t(found - envelope.begin()) : 0;
}

} // namespace

double Grid::firstBar() const
{
    const double first = phase + beatSeconds() * downbeat;
    if (first >= cueIn)
        return first;
    return first + barSeconds() * std::ceil((cueIn - first) / barSeconds());
}

Comb bestComb(std::span<const double> envelope, double period)
{
    Comb best{.offset = 0.0, .period = period};
    double highest = -std::numeric_limits<double>::infinity();
    for (int step = -tempoSteps; step <= tempoSteps; ++step) {
        const double tried = period * (1.0 + step * tempoStep);
        if (tried < shortestPeriod)
            continue;
        const int offsets = std::max(int(tried * offsetsAFrame), fewestOffsets);
        for (int offset = 0; offset < offsets; ++offset) {
            const Comb comb{.offset = tried * offset / offsets, .period = tried};
            const double score = sumUnder(envelope, comb) * tried;
            if (score > highest) {
                highest = score;
                best = comb;
            }
        }
    }
    return best;
}

Grid grid(std::span<const double> envelope, double bpm, double rate)
{
    if (envelope.size() < tooShort || !(bpm > 0.0))
        return {.bpm = bpm};
    const double framesAMinute = 60.0 * frameRate(rate);
    const Comb comb = bestComb(envelope, 60.0 / bpm * frameRate(rate));
    return {.bpm = framesAMinute / comb.period,
            .phase = comb.offset / frameRate(rate) + double(hop) / rate,
            .downbeat = downbeatOf(envelope, comb),
            .cueIn = double(firstAudible(envelope)) / frameRate(rate)};
}

} // namespace orvane::DJ
