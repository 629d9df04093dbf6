#include "demo/music/Instruments.h"

#include "demo/music/Song.h"

#include <cmath>
#include <numbers>

namespace orvane::demo {
namespace {

constexpr double turn = 2 * std::numbers::pi;

std::size_t samples(double seconds)
{
    return static_cast<std::size_t>(std::lround(seconds * sampleRate));
}

/// White noise from -1 to 1 that depends on its seed alone.
class Noise
{
public:
    explicit Noise(std::uint32_t seed)
        : state_(seed * 2654435761U + 1)
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

/// Rises within `attack` and falls within `release` seconds, so that no note begins or ends with a click.
double edge(double time, double length, double attack, double release)
{
    const double rise = std::min(1.0, time / attack);
    const double fall = std::min(1.0, (length - time) / release);
    return std::max(0.0, std::min(rise, fall));
}

} // namespace

void Stage::add(std::size_t at, double value, double place)
{
    if (at >= left.size())
        return;
    left[at] += value * (1 - std::max(0.0, place));
    right[at] += value * (1 + std::min(0.0, place));
}

void playKick(Stage& stage, std::size_t start, double gain)
{
    double phase = 0;
    for (std::size_t index = 0; index < samples(0.22); ++index) {
        const double time = static_cast<double>(index) / sampleRate;
        phase += turn * (46 + 130 * std::exp(-time * 38)) / sampleRate;
        stage.add(start + index, gain * std::cos(phase) * std::exp(-time * 16) * edge(time, 0.22, 0.0004, 0.02), 0);
    }
}

void playSnare(Stage& stage, std::size_t start, double gain, std::uint32_t seed)
{
    Noise noise(seed);
    for (std::size_t index = 0; index < samples(0.16); ++index) {
        const double time = static_cast<double>(index) / sampleRate;
        const double body = 0.5 * std::sin(turn * 186 * time) * std::exp(-time * 34);
        const double wires = 0.6 * noise.next() * std::exp(-time * 26);
        stage.add(start + index, gain * (body + wires) * edge(time, 0.16, 0.0004, 0.02), 0.06);
    }
}

void playHat(Stage& stage, std::size_t start, double gain, double place, std::uint32_t seed)
{
    Noise noise(seed);
    double before = 0;
    for (std::size_t index = 0; index < samples(0.05); ++index) {
        const double time = static_cast<double>(index) / sampleRate;
        const double white = noise.next();
        // The difference of neighbours leaves the highs.
        stage.add(start + index, gain * 0.5 * (white - before) * std::exp(-time * 95) * edge(time, 0.05, 0.0003, 0.01),
                  place);
        before = white;
    }
}

void playBass(Stage& stage, const Note& note)
{
    for (std::size_t index = 0; index < samples(note.seconds); ++index) {
        const double time = static_cast<double>(index) / sampleRate;
        double wave = 0;
        for (int partial = 1; partial <= 4; ++partial)
            wave += std::sin(turn * note.hertz * partial * time) / (partial * partial);
        const double shape = edge(time, note.seconds, 0.006, 0.03) * (0.55 + 0.45 * std::exp(-time * 7));
        stage.add(note.start + index, note.gain * wave * shape, note.place);
    }
}

void playPad(Stage& stage, const Note& note)
{
    for (std::size_t index = 0; index < samples(note.seconds); ++index) {
        const double time = static_cast<double>(index) / sampleRate;
        const double breath = 1 + 0.15 * std::sin(turn * 0.23 * time);
        const double slow = std::sin(turn * note.hertz * 0.9985 * time) + 0.3 * std::sin(turn * note.hertz * 2 * time);
        const double quick = std::sin(turn * note.hertz * 1.0015 * time) + 0.2 * std::sin(turn * note.hertz * 3 * time);
        const double shape = note.gain * breath * edge(time, note.seconds, 0.08, 0.12);
        stage.add(note.start + index, 0.5 * shape * slow, -0.6);
        stage.add(note.start + index, 0.5 * shape * quick, 0.6);
    }
}

void playPluck(Stage& stage, const Note& note)
{
    for (std::size_t index = 0; index < samples(note.seconds); ++index) {
        const double time = static_cast<double>(index) / sampleRate;
        const double wave =
            std::sin(turn * note.hertz * time) + 0.4 * std::sin(turn * 2 * note.hertz * time) * std::exp(-time * 9);
        stage.add(note.start + index, note.gain * wave * std::exp(-time * 5) * edge(time, note.seconds, 0.004, 0.05),
                  note.place);
    }
}

} // namespace orvane::demo
