#include "dj/arithmetic/Tempo.h"

#include "dj/arithmetic/OnsetEnvelope.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <vector>

namespace orvane::DJ {

namespace {

constexpr double slowest = 70.0;
constexpr double fastest = 180.0;
constexpr std::size_t tooShort = 64;

std::vector<double> withoutMean(std::span<const double> values)
{
    const double mean = std::accumulate(values.begin(), values.end(), 0.0) / double(values.size());
    std::vector<double> result(values.begin(), values.end());
    for (double& value : result)
        value -= mean;
    return result;
}

/// How alike the values are to themselves, `lag` later.
double likeness(std::span<const double> values, std::size_t lag)
{
    const std::size_t count = values.size() - lag;
    return std::inner_product(values.begin(), values.begin() + std::ptrdiff_t(count),
                              values.begin() + std::ptrdiff_t(lag), 0.0) /
           double(count);
}

} // namespace

std::optional<std::size_t> tempoLag(std::span<const double> envelope, double rate)
{
    if (envelope.size() <= tooShort)
        return {};
    const double framesAMinute = 60.0 * frameRate(rate);
    const auto least = std::max<std::size_t>(2, std::size_t(std::ceil(framesAMinute / fastest)));
    const auto most = std::min(envelope.size() / 2, std::size_t(framesAMinute / slowest));
    if (least >= most)
        return {};
    const std::vector<double> values = withoutMean(envelope);
    std::size_t best = least;
    double highest = -std::numeric_limits<double>::infinity();
    for (std::size_t lag = least; lag <= most; ++lag) {
        const double score = likeness(values, lag);
        if (score > highest) {
            highest = score;
            best = lag;
        }
    }
    return best;
}

double tempo(std::span<const double> envelope, double rate)
{
    const std::optional<std::size_t> lag = tempoLag(envelope, rate);
    if (!lag)
        return fallbackTempo;
    const double bpm = 60.0 * frameRate(rate) / double(*lag);
    return bpm < slowest || bpm > fastest ? fallbackTempo : bpm;
}

} // namespace orvane::DJ
