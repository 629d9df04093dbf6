#include "tests/mastering/arithmetic/Signals.h"

#include "tests/support/Sandbox.h"

#include <cmath>
#include <numbers>
#include <random>

namespace orvane::test {

namespace {

constexpr double turn = 2.0 * std::numbers::pi;

double amplitude(double decibels)
{
    return std::pow(10.0, decibels / 20.0);
}

} // namespace

Samples tone(double frequency, double level, double seconds, double rate, double degrees)
{
    Samples samples(std::size_t(std::lround(seconds * rate)));
    for (std::size_t frame = 0; frame < samples.size(); ++frame)
        samples[frame] = amplitude(level) * std::sin(turn * (frequency * double(frame) / rate + degrees / 360.0));
    return samples;
}

Samples steps(const std::vector<Part>& parts, double rate)
{
    double seconds = 0.0;
    for (const Part& part : parts)
        seconds += part.seconds;
    Samples samples = tone(1000.0, 0.0, seconds, rate);
    std::size_t frame = 0;
    double end = 0.0;
    for (const Part& part : parts) {
        end += part.seconds * rate;
        for (; frame < samples.size() && double(frame) < end; ++frame)
            samples[frame] *= amplitude(part.level);
    }
    return samples;
}

Samples noise(std::size_t frames, double deviation, unsigned stream)
{
    std::mt19937 generator(seed() + stream);
    std::normal_distribution<double> distribution(0.0, deviation);
    Samples samples(frames);
    for (double& sample : samples)
        sample = distribution(generator);
    return samples;
}

Channels music(double seconds, double rate, std::size_t channels)
{
    Channels result;
    for (std::size_t channel = 0; channel < channels; ++channel) {
        Samples samples = noise(std::size_t(seconds * rate), 0.02, unsigned(channel));
        for (std::size_t frame = 0; frame < samples.size(); ++frame) {
            const double time = double(frame) / rate;
            const double beat = std::fmod(time, 0.5);
            const double swell = 0.5 + 0.5 * std::sin(turn * time / 7.0 + double(channel));
            samples[frame] += 0.5 * std::exp(-30.0 * beat) * std::sin(turn * 60.0 * beat);
            samples[frame] += 0.2 * swell * std::sin(turn * 441.0 * time) * (std::fmod(time, 9.0) < 8.0 ? 1.0 : 0.0);
            samples[frame] += 0.3 * std::exp(-200.0 * beat) * std::sin(turn * rate / 4.1 * time + 0.7);
        }
        result.push_back(std::move(samples));
    }
    return result;
}

Channels sections(double rate, std::size_t channels)
{
    constexpr double levels[] = {0.1, 0.5, 0.25};
    const auto length = std::size_t(12.0 * rate);
    Channels result;
    for (std::size_t channel = 0; channel < channels; ++channel) {
        Samples samples = noise(3 * length, 0.2, unsigned(channel));
        double dull = 0.0;
        for (std::size_t frame = 0; frame < samples.size(); ++frame) {
            const double beat = std::fmod(double(frame) / rate, 0.5);
            dull += 0.2 * (samples[frame] - dull);
            samples[frame] = dull * levels[frame / length] * (0.3 + std::exp(-10.0 * beat));
        }
        result.push_back(std::move(samples));
    }
    return result;
}

Samples silence(std::size_t frames)
{
    return Samples(frames);
}

Samples louder(Samples samples, double decibels)
{
    for (double& sample : samples)
        sample *= amplitude(decibels);
    return samples;
}

Samples faded(Samples samples, double rate)
{
    const auto length = std::size_t(0.1 * rate);
    for (std::size_t frame = 0; frame < length; ++frame) {
        const double gain = 0.5 - 0.5 * std::cos(std::numbers::pi * double(frame) / double(length));
        samples[frame] *= gain;
        samples[samples.size() - 1 - frame] *= gain;
    }
    return samples;
}

} // namespace orvane::test
