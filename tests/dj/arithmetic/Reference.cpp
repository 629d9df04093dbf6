#include "tests/dj/arithmetic/Reference.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace orvane::test::Reference {

namespace {

constexpr double pi = std::numbers::pi;
constexpr double infinity = std::numeric_limits<double>::infinity();

/// The magnitudes of the first half of the spectrum of `count` samples from `start` on, under a Hann window. Bin 0 is
/// made of the zero and the top frequency. `count` is a power of two.
Samples spectrum(const Samples& samples, std::size_t start, std::size_t count, std::size_t bins)
{
    Samples windowed(count);
    Samples cosines(count);
    Samples sines(count);
    for (std::size_t n = 0; n < count; ++n) {
        cosines[n] = std::cos(2.0 * pi * double(n) / double(count));
        sines[n] = std::sin(2.0 * pi * double(n) / double(count));
        windowed[n] = samples[start + n] * std::sqrt(2.0 / 3.0) * (1.0 - cosines[n]);
    }
    // Without the checks of the test build, which would take most of the time here.
    const double* const x = windowed.data();
    const double* const c = cosines.data();
    const double* const i = sines.data();
    Samples magnitudes(bins);
    for (std::size_t k = 0; k < bins; ++k) {
        double real = 0.0;
        double imaginary = 0.0;
        for (std::size_t n = 0; n < count; ++n) {
            real += x[n] * c[n * k & (count - 1)];
            imaginary += x[n] * (k > 0 ? i[n * k & (count - 1)] : n % 2 == 0 ? 1.0 : -1.0);
        }
        magnitudes[k] = std::sqrt(real * real + imaginary * imaginary);
    }
    return magnitudes;
}

double interpolated(const Samples& envelope, double t)
{
    if (t < 0.0 || t >= double(envelope.size() - 1))
        return 0.0;
    const double f = t - std::floor(t);
    const auto i = std::size_t(t);
    return (1.0 - f) * envelope[i] + f * envelope[i + 1];
}

} // namespace

Samples mono(const Channels& channels)
{
    Samples result = channels[0];
    for (std::size_t i = 0; channels.size() > 1 && i < result.size(); ++i)
        result[i] = (channels[0][i] + channels[1][i]) * 0.5;
    return result;
}

Samples onsetEnvelope(const Samples& samples)
{
    Samples envelope;
    Samples previous;
    for (std::size_t start = 0; samples.size() > 1024 && start + 1024 <= samples.size(); start += 512) {
        const Samples magnitudes = spectrum(samples, start, 1024, 512);
        double value = 0.0;
        for (std::size_t k = 0; k < 512 && start > 0; ++k) {
            if (magnitudes[k] - previous[k] > 0.0)
                value += (0.25 + 0.75 * double(k) / 512.0) * (magnitudes[k] - previous[k]);
        }
        envelope.push_back(value);
        previous = magnitudes;
    }
    return envelope;
}

std::size_t tempoLag(const Samples& envelope, double rate)
{
    const std::size_t n = envelope.size();
    const double fr = rate / 512.0;
    const auto minLag = std::size_t(std::max(2.0, std::ceil(60.0 * fr / 180.0)));
    const auto maxLag = std::min(n / 2, std::size_t(60.0 * fr / 70.0));
    if (n <= 64 || minLag >= maxLag)
        return 0;
    double mean = 0.0;
    for (const double value : envelope)
        mean += value / double(n);
    double bestScore = -infinity;
    std::size_t best = 0;
    for (std::size_t lag = minLag; lag <= maxLag; ++lag) {
        double score = 0.0;
        for (std::size_t i = 0; i + lag < n; ++i)
            score += (envelope[i] - mean) * (envelope[i + lag] - mean);
        score /= double(n - lag);
        if (score > bestScore) {
            bestScore = score;
            best = lag;
        }
    }
    return best;
}

double tempo(const Samples& envelope, double rate)
{
    const std::size_t lag = tempoLag(envelope, rate);
    const double bpm = lag == 0 ? 120.0 : 60.0 * rate / 512.0 / double(lag);
    return bpm < 70.0 || bpm > 180.0 ? 120.0 : bpm;
}

Grid grid(const Samples& envelope, double bpm, double rate)
{
    if (envelope.size() < 17 || bpm <= 0.0)
        return {.bpm = bpm};
    const double fr = rate / 512.0;
    const double last = double(envelope.size()) - 1.0;
    Grid grid;
    double offset = 0.0;
    double period = 60.0 / bpm * fr;
    const double period0 = period;
    double bestScore = -infinity;
    for (int i = -40; i <= 40; ++i) {
        const double tried = period0 * (1.0 + i * 0.0005);
        if (tried < 2.0)
            continue;
        const int steps = std::max(int(tried * 4.0), 16);
        for (int s = 0; s < steps; ++s) {
            double sum = 0.0;
            for (double t = tried * s / steps; t < last; t += tried)
                sum += interpolated(envelope, t);
            if (sum * tried > bestScore) {
                bestScore = sum * tried;
                offset = tried * s / steps;
                period = tried;
                grid.tempoStep = i;
                grid.offsetStep = s;
            }
        }
    }
    double accumulators[4] = {};
    int j = 0;
    for (double t = offset; t < last; t += period)
        accumulators[j++ % 4] += interpolated(envelope, t);
    for (int beat = 1; beat < 4; ++beat) {
        if (accumulators[beat] > accumulators[grid.downbeat])
            grid.downbeat = beat;
    }
    grid.phase = offset / fr + 512.0 / rate;
    grid.bpm = 60.0 * fr / period;
    double peak = 0.0;
    for (const double value : envelope)
        peak = std::max(peak, value);
    for (std::size_t i = envelope.size(); i-- > 0;) {
        if (envelope[i] > 0.1 * peak)
            grid.cueIn = double(i) / fr;
    }
    return grid;
}

Samples chroma(const Samples& samples, double rate)
{
    Samples chroma(12);
    const std::size_t step = std::max(std::size_t(rate * 0.5), std::size_t(4096));
    for (std::size_t start = 0; start + 4096 <= samples.size(); start += step) {
        // Bins above 2000 Hz do not count, so that they need not be looked at.
        const std::size_t bins = std::min(std::size_t(2048), std::size_t(2000.0 * 4096.0 / rate) + 1);
        const Samples magnitudes = spectrum(samples, start, 4096, bins);
        for (std::size_t k = 1; k < bins; ++k) {
            const double f = double(k) * rate / 4096.0;
            if (f > 55.0 && f < 2000.0)
                chroma[std::size_t(std::round(12.0 * std::log2(f / 440.0) + 69.0)) % 12] += magnitudes[k];
        }
    }
    return chroma;
}

Key keyOf(const Samples& chroma)
{
    const Samples profiles[2] = {{6.35, 2.23, 3.48, 2.33, 4.38, 4.09, 2.52, 5.19, 2.39, 3.66, 2.29, 2.88},
                                 {6.33, 2.68, 3.52, 5.38, 2.60, 3.53, 2.54, 4.75, 3.98, 2.69, 3.34, 3.17}};
    double total = 0.0;
    for (const double value : chroma)
        total += value;
    Key best;
    double bestScore = -infinity;
    for (int r = 0; r < 12 && total > 0.0; ++r) {
        for (int mode = 0; mode < 2; ++mode) {
            double score = 0.0;
            for (int i = 0; i < 12; ++i)
                score += profiles[mode][std::size_t(i)] * chroma[std::size_t(r + i) % 12] / total;
            if (score > bestScore) {
                bestScore = score;
                best = {.tonic = r, .isMinor = mode == 1};
            }
        }
    }
    return best;
}

Key key(const Samples& samples, double rate)
{
    return keyOf(chroma(samples, rate));
}

double energy(const Samples& samples)
{
    double sum = 0.0;
    for (const double sample : samples)
        sum += sample * sample;
    const double level = 10.0 * std::log10(std::max(sum / double(samples.size()), 1e-12));
    return std::min(std::max((level + 30.0) / 24.0, 0.0), 1.0);
}

} // namespace orvane::test::Reference
