#include "demonstration/music/Voice.h"

#include "demonstration/music/Song.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <vector>

namespace orvane::demo {
namespace {

constexpr double turn = 2 * std::numbers::pi;
constexpr unsigned tableBits = 11;
constexpr std::size_t tableSize = std::size_t{1} << tableBits;

/// One turn of a wave, and its first sample again behind it.
using Table = std::array<double, tableSize + 1>;

/// How strong a partial of a wave is, counted from 1.
double strength(Voice::Wave wave, int partial)
{
    switch (wave) {
    case Voice::Wave::warm:
        return partial <= 10 ? std::pow(partial, -1.35) : 0;
    case Voice::Wave::hollow:
        return partial % 2 == 1 && partial <= 9 ? std::pow(partial, -1.5) : 0;
    case Voice::Wave::bell:
        return partial == 1 ? 1 : partial == 2 ? 0.35 : partial == 4 ? 0.16 : 0;
    }
    return 0;
}

Table makeTable(Voice::Wave wave)
{
    Table table{};
    for (int partial = 1; partial <= 10; ++partial) {
        const double level = 0.6 * strength(wave, partial);
        for (std::size_t index = 0; index < tableSize; ++index)
            table[index] += level * std::sin(turn * partial * static_cast<double>(index) / tableSize);
    }
    table[tableSize] = table[0];
    return table;
}

const Table& tableOf(Voice::Wave wave)
{
    static const std::array<Table, 3> tables{makeTable(Voice::Wave::warm), makeTable(Voice::Wave::hollow),
                                             makeTable(Voice::Wave::bell)};
    return tables[static_cast<std::size_t>(wave)];
}

/// Reads a table at a pitch. The phase is a fraction of a turn in 32 bits, which wraps by itself.
class Oscillator
{
public:
    Oscillator(const Table& table, double hertz)
        : table_(table)
        , step_(static_cast<std::uint32_t>(hertz / sampleRate * 4294967296.0))
    {
    }

    double next()
    {
        constexpr unsigned fractionBits = 32 - tableBits;
        const std::size_t index = phase_ >> fractionBits;
        const double fraction = (phase_ & ((1U << fractionBits) - 1)) / static_cast<double>(1U << fractionBits);
        phase_ += step_;
        return table_[index] + fraction * (table_[index + 1] - table_[index]);
    }

private:
    const Table& table_;
    std::uint32_t step_;
    std::uint32_t phase_ = 0;
};

/// Share of a step that a filter of one pole goes towards its input.
double openness(double hertz)
{
    return 1 - std::exp(-turn * hertz / sampleRate);
}

/// The level of a note over its samples: up, down to what is held, and away.
std::vector<double> envelope(const Voice& voice, std::size_t length)
{
    const double fall = std::exp(-voice.decay / sampleRate);
    const double attack = std::max(1.0, voice.attack * sampleRate);
    const double release = std::max(1.0, voice.release * sampleRate);
    std::vector<double> levels(length);
    double stroke = 1 - voice.sustain;
    for (std::size_t index = 0; index < length; ++index) {
        const double up = std::min(1.0, static_cast<double>(index) / attack);
        const double away = std::min(1.0, static_cast<double>(length - index) / release);
        levels[index] = up * away * (voice.sustain + stroke);
        stroke *= fall;
    }
    return levels;
}

std::vector<double> sounded(const Voice& voice, double hertz, const std::vector<double>& levels)
{
    Oscillator oscillator(tableOf(voice.wave), hertz);
    const double fall = std::exp(-voice.decay / sampleRate);
    const double closed = openness(voice.dark);
    double opened = openness(voice.bright) - closed;
    double filtered = 0;
    std::vector<double> samples(levels.size());
    for (std::size_t index = 0; index < levels.size(); ++index) {
        filtered += (closed + opened) * (oscillator.next() - filtered);
        opened *= fall;
        samples[index] = levels[index] * filtered;
    }
    return samples;
}

} // namespace

void play(Stage& stage, const Note& note, const Voice& voice)
{
    if (note.start >= stage.size())
        return;
    const auto length = static_cast<std::size_t>((note.seconds + voice.release) * sampleRate);
    const std::vector<double> levels = envelope(voice, std::min(length, stage.size() - note.start));
    for (const double side : {-1.0, 1.0}) {
        const double hertz = note.hertz * std::exp2(side * voice.detune / 2400);
        const double place = std::clamp(note.place + side * voice.width, -1.0, 1.0);
        stage.add(sounded(voice, hertz, levels), note.start, note.gain / 2, place);
    }
}

} // namespace orvane::demo
