#include "demonstration/music/Drums.h"

#include "demonstration/music/Song.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace orvane::demo {
namespace {

constexpr double turn = 2 * std::numbers::pi;

/// White noise from -1 to 1 that depends on its seed alone.
class Noise
{
public:
    explicit Noise(std::uint32_t seed)
        : state_(seed * 2654435761U | 1U)
    {
    }

    double next()
    {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 17;
        state_ ^= state_ << 5;
        return static_cast<double>(state_) / 2147483648.0 - 1.0;
    }

private:
    std::uint32_t state_;
};

/// Noise of which `order` differences have taken the lows.
std::vector<double> hiss(std::uint32_t seed, std::size_t length, int order)
{
    Noise noise(seed);
    std::vector<double> samples(length);
    std::generate(samples.begin(), samples.end(), [&noise] { return noise.next(); });
    for (int pass = 0; pass < order; ++pass) {
        for (std::size_t index = length - 1; index > 0; --index)
            samples[index] = 0.6 * (samples[index] - samples[index - 1]);
    }
    return samples;
}

/// Makes a sound of `seconds` from what it is at each time, and lets its last 10 ms fade.
template <typename Sound>
std::vector<double> struck(double seconds, const Sound& sound)
{
    std::vector<double> samples(static_cast<std::size_t>(seconds * sampleRate));
    for (std::size_t index = 0; index < samples.size(); ++index) {
        const double time = static_cast<double>(index) / sampleRate;
        const double fade = std::min(1.0, (seconds - time) / 0.01);
        samples[index] = fade * sound(time, index);
    }
    return samples;
}

std::vector<double> makeKick(double floor)
{
    // The phase of a pitch that falls from floor + 150 Hz to the floor.
    return struck(0.32, [floor](double time, std::size_t) {
        const double phase = turn * (floor * time + 150 / 42.0 * (1 - std::exp(-42 * time)));
        const double click = 0.25 * std::exp(-900 * time);
        const double attack = std::min(1.0, time / 0.0005);
        return attack * (std::sin(phase + 0.5) * std::exp(-11 * time) + click);
    });
}

std::vector<double> makeSnare(std::uint32_t seed, double body)
{
    const std::vector<double> wires = hiss(seed, sampleRate / 4, 1);
    return struck(0.22, [&wires, body](double time, std::size_t index) {
        const double skin = std::sin(turn * body * time) + 0.5 * std::sin(turn * body * 1.61 * time);
        return 0.45 * skin * std::exp(-30 * time) + 0.75 * wires[index] * std::exp(-19 * time);
    });
}

std::vector<double> makeClap(std::uint32_t seed)
{
    const std::vector<double> hands = hiss(seed, sampleRate / 2, 1);
    return struck(0.3, [&hands](double time, std::size_t index) {
        const double burst = time < 0.027 ? std::exp(-220 * std::fmod(time, 0.009)) : std::exp(-17 * (time - 0.027));
        return 0.8 * hands[index] * burst;
    });
}

std::vector<double> makeCymbal(std::uint32_t seed, double seconds, double decay)
{
    const std::vector<double> metal = hiss(seed, sampleRate * 3, 2);
    return struck(seconds, [&metal, decay](double time, std::size_t index) {
        return 0.7 * metal[index] * std::exp(-decay * time) * std::min(1.0, time / 0.0006);
    });
}

} // namespace

DrumKit makeDrumKit(unsigned seed)
{
    return {.kick = makeKick(44 + seed % 7),
            .snare = makeSnare(seed + 1, 170 + 5.0 * (seed % 8)),
            .clap = makeClap(seed + 2),
            .closedHat = makeCymbal(seed + 3, 0.09, 70),
            .openHat = makeCymbal(seed + 4, 0.35, 12),
            .crash = makeCymbal(seed + 5, 2.2, 2.4)};
}

} // namespace orvane::demo
