#include "tests/mastering/arithmetic/Reference.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvane::test::Reference {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

struct Section
{
    double b0, b1, b2, a1, a2;
};

Section shelf(double rate)
{
    if (std::abs(rate - 48000.0) < 1.0)
        return {1.53512485958697, -2.69169618940638, 1.19839281085285, -1.69065929318241, 0.73248077421585};
    const double k = std::tan(std::numbers::pi * 1681.974450955533 / rate);
    const double q = 0.7071752369554196;
    const double vh = 1.5848647011308556;
    const double vb = 1.2587209302325617;
    const double d = 1 + k / q + k * k;
    return {(vh + vb * k / q + k * k) / d, 2 * (k * k - vh) / d, (vh - vb * k / q + k * k) / d, 2 * (k * k - 1) / d,
            (1 - k / q + k * k) / d};
}

Section highPass(double rate)
{
    if (std::abs(rate - 48000.0) < 1.0)
        return {1, -2, 1, -1.99004745483398, 0.99007225036621};
    const double k = std::tan(std::numbers::pi * 38.13547087602444 / rate);
    const double q = 0.5003270373238773;
    const double d = 1 + k / q + k * k;
    return {1, -2, 1, 2 * (k * k - 1) / d, (1 - k / q + k * k) / d};
}

Samples filtered(const Samples& x, const Section& s)
{
    Samples y(x.size());
    const auto at = [](const Samples& v, std::size_t n, std::size_t back) { return n < back ? 0.0 : v[n - back]; };
    for (std::size_t n = 0; n < x.size(); ++n)
        y[n] = s.b0 * x[n] + s.b1 * at(x, n, 1) + s.b2 * at(x, n, 2) - s.a1 * at(y, n, 1) - s.a2 * at(y, n, 2);
    return y;
}

double channelWeight(std::size_t channel, std::size_t count)
{
    static const std::vector<std::vector<double>> table{
        {1}, {1, 1}, {1, 1, 1}, {1, 1, 1.41, 1.41}, {1, 1, 1, 1.41, 1.41}, {1, 1, 1, 0, 1.41, 1.41, 1.41, 1.41}};
    return table[std::min<std::size_t>(count, 6) - 1][channel];
}

double loudness(double energy)
{
    return energy > 0 ? 10 * std::log10(energy) - 0.691 : -infinity;
}

double meanLoudness(const Samples& values)
{
    double sum = 0;
    for (const double value : values)
        sum += std::pow(10, (value + 0.691) / 10);
    return 10 * std::log10(sum / double(values.size())) - 0.691;
}

template <typename Kept>
Samples keep(const Samples& values, Kept kept)
{
    Samples result;
    std::copy_if(values.begin(), values.end(), std::back_inserter(result), kept);
    return result;
}

Samples taps()
{
    Samples h(129);
    double sum = 0;
    for (int i = 0; i <= 128; ++i) {
        const int d = i - 64;
        const double x = d * std::numbers::pi * 0.25;
        const double s = d == 0 ? 1.0 : std::sin(x) / x;
        const double w =
            0.42 - 0.5 * std::cos(2 * std::numbers::pi * i / 128) + 0.08 * std::cos(4 * std::numbers::pi * i / 128);
        h[std::size_t(i)] = s * w;
        sum += s * w;
    }
    for (double& tap : h)
        tap /= sum * 0.25;
    return h;
}

double magnitude(const Samples& samples)
{
    double largest = 0;
    for (const double sample : samples)
        largest = std::max(largest, std::abs(sample));
    return largest;
}

double inDecibels(double value)
{
    return value > 0 ? 20 * std::log10(value) : -infinity;
}

} // namespace

Samples kWeighted(const Samples& samples, double rate)
{
    return filtered(filtered(samples, shelf(rate)), highPass(rate));
}

Samples windowLoudness(const Channels& weighted, std::size_t length, std::size_t hop)
{
    Samples result;
    for (std::size_t start = 0; start + length <= weighted.front().size(); start += hop) {
        double sum = 0;
        for (std::size_t channel = 0; channel < weighted.size(); ++channel) {
            double squares = 0;
            for (std::size_t frame = start; frame < start + length; ++frame)
                squares += weighted[channel][frame] * weighted[channel][frame];
            sum += channelWeight(channel, weighted.size()) * squares / double(length);
        }
        result.push_back(loudness(sum));
    }
    return result;
}

double integrated(const Samples& blocks)
{
    const Samples audible = keep(blocks, [](double block) { return block > -70; });
    if (audible.empty())
        return -infinity;
    const double threshold = meanLoudness(audible) - 10;
    const Samples loud = keep(audible, [&](double block) { return block > threshold; });
    return meanLoudness(loud.empty() ? audible : loud);
}

double range(const Samples& shortTerm)
{
    const Samples audible = keep(shortTerm, [](double value) { return value >= -70; });
    if (audible.empty())
        return 0;
    const double threshold = meanLoudness(audible) - 20;
    Samples kept = keep(audible, [&](double value) { return threshold <= value; });
    std::sort(kept.begin(), kept.end());
    if (kept.size() < 2)
        return 0;
    const auto percentile = [&](double p) { return kept[std::size_t(std::lround(double(kept.size() - 1) * p))]; };
    return percentile(0.95) - percentile(0.1);
}

Samples oversampled(const Samples& samples)
{
    static const Samples h = taps();
    const std::size_t length = 4 * samples.size();
    Samples stuffed(length);
    for (std::size_t k = 0; k < samples.size(); ++k)
        stuffed[4 * k] = samples[k];
    Samples out(length);
    for (std::size_t k = 0; k + 129 < length; ++k) {
        for (std::size_t j = 0; j <= 128; ++j)
            out[k] += stuffed[k + j] * h[128 - j];
    }
    return out;
}

double truePeak(const Samples& samples)
{
    double largest = 0;
    for (std::size_t start = 0; start < samples.size(); start += 65536) {
        const std::size_t from = start < 64 ? 0 : start - 64;
        const std::size_t to = std::min(start + 65536 + 64, samples.size());
        const Samples piece(samples.begin() + std::ptrdiff_t(from), samples.begin() + std::ptrdiff_t(to));
        largest = std::max(largest, magnitude(oversampled(piece)));
    }
    return largest;
}

Master::Reading measure(const Channels& channels, double rate)
{
    Channels weighted;
    double peak = 0;
    double samplePeak = 0;
    for (const auto& channel : channels) {
        weighted.push_back(kWeighted(channel, rate));
        samplePeak = std::max(samplePeak, magnitude(channel));
        peak = std::max({peak, samplePeak, truePeak(channel)});
    }
    const auto block = std::size_t(0.4 * rate);
    const double loud = integrated(windowLoudness(weighted, block, block / 4));
    const double lra = range(windowLoudness(weighted, std::size_t(3.0 * rate), std::size_t(0.1 * rate)));
    return {.integrated = loud,
            .truePeak = inDecibels(peak),
            .range = std::isfinite(loud) ? lra : 0.0,
            .samplePeak = inDecibels(samplePeak)};
}

void limit(Channels& channels, double ceiling, double rate)
{
    const std::size_t n = channels.front().size();
    const double level = std::pow(10, ceiling / 20);
    const std::size_t ahead = std::max<std::size_t>(1, std::size_t(0.005 * rate));
    const std::size_t release = std::max<std::size_t>(1, std::size_t(0.05 * rate));
    Samples envelope(n);
    for (const auto& channel : channels) {
        for (std::size_t i = 0; i < n; ++i)
            envelope[i] = std::max(envelope[i], std::abs(channel[i]));
    }
    const Samples v = slidingMaximum(envelope, ahead);
    const double r = std::pow(2, -1.0 / double(release));
    double s = 1;
    for (std::size_t i = 0; i < n; ++i) {
        const double q = level < v[i] ? level / v[i] : 1.0;
        s = q < s ? q : std::min(s / r, 1.0);
        for (auto& channel : channels)
            channel[i] = std::min(std::max(channel[i] * s, -level), level);
    }
}

Samples slidingMaximum(const Samples& values, std::size_t length)
{
    Samples largest(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        for (std::size_t j = i; j < std::min(i + length, values.size()); ++j)
            largest[i] = std::max(largest[i], values[j]);
    }
    return largest;
}

double jitterUnit(std::int64_t seed, int step)
{
    std::uint64_t state = 1442695040888963407u + std::uint64_t(seed) * 6364136223846793005u;
    for (int count = 0; count <= step; ++count)
        state = 1442695040888963407u + state * 6364136223846793005u;
    return double(state >> 33) / 2147483648.0;
}

Samples resample(const Samples& x, double ratio)
{
    if (!(ratio > 0) || !(std::abs(ratio - 1) > 0.0001) || x.size() < 2 || double(x.size()) / ratio < 2)
        return x;
    Samples y(std::size_t(double(x.size()) / ratio), 0.0);
    for (std::size_t i = 0; i < y.size(); ++i) {
        const double p = double(i) * ratio;
        const auto k = std::size_t(p);
        const double f = p - double(k);
        if (k + 1 < x.size())
            y[i] = (1 - f) * x[k] + f * x[k + 1];
    }
    return y;
}

Samples stretch(const Samples& x, double ratio)
{
    if (!(ratio > 0) || !(std::abs(ratio - 1) > 0.0001) || x.size() <= 8192 || std::lround(ratio * 1024.0) < 1)
        return x;
    const auto count = long(x.size());
    const long inputHop = std::lround(ratio * 1024.0);
    const long outLength = long(double(count) / ratio) + 2048;
    Samples sum(std::size_t(outLength), 0.0);
    Samples weight(std::size_t(outLength), 0.0);
    const auto at = [](auto& values, long index) -> auto&
    {
        return values[std::size_t(index)];
    };
    long inPos = 0;
    long outPos = 0;
    for (; inPos + 2048 + 220 < count && outPos + 2048 < outLength; inPos += inputHop, outPos += 1024) {
        long best = inPos;
        double bestScore = -std::numeric_limits<double>::infinity();
        for (long c = std::max(inPos - 220, 0L); outPos > 0 && c <= std::min(inPos + 220, count - 2048); c += 8) {
            double score = 0.0;
            for (long k = 0; k < 1024; k += 4)
                score += at(sum, outPos + k) * at(x, c + k);
            if (score > bestScore) {
                bestScore = score;
                best = c;
            }
        }
        for (long k = 0; k < 2048; ++k) {
            const double w = std::sqrt(2.0 / 3.0) * (1.0 - std::cos(2.0 * std::numbers::pi * double(k) / 2048.0));
            at(sum, outPos + k) += at(x, best + k) * w;
            at(weight, outPos + k) += w;
        }
    }
    sum.resize(std::size_t(std::min(outLength, outPos + 1024)));
    for (std::size_t i = 0; i < sum.size(); ++i)
        sum[i] = weight[i] > 0.0001 ? sum[i] / weight[i] : sum[i];
    return sum;
}

Samples pitchShift(const Samples& x, int semitones)
{
    if (semitones == 0 || x.size() < 8193)
        return x;
    const double r = std::exp2(semitones / 12.0);
    return stretch(resample(x, r), 1 / r);
}

void apply(double target, double ceiling, Channels& channels, double rate)
{
    const double integrated = measure(channels, rate).integrated;
    if (!std::isfinite(integrated))
        return;
    for (Samples& channel : channels) {
        for (double& sample : channel)
            sample *= std::pow(10, (target - integrated) / 20);
    }
    const auto peak = [&] { return measure(channels, rate).truePeak; };
    if (peak() <= ceiling)
        return;
    const Channels gained = channels;
    double c = ceiling;
    for (int t = 0; t <= 3; ++t) {
        channels = gained;
        limit(channels, c, rate);
        const double m = peak();
        if (m <= ceiling + 0.01)
            return;
        c -= std::max(m - ceiling, 0.02);
    }
}

} // namespace orvane::test::Reference
