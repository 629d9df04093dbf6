#include "dj/arithmetic/Key.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdlib>

namespace orvane::DJ {

namespace {

constexpr int semitonesInOctave = 12;
constexpr int wheelSteps = 12;
/// From a minor key's tonic up to that of its relative major.
constexpr int toRelativeMajor = 3;

/// The wheel number of the major key on each tonic.
constexpr std::array<int, semitonesInOctave> wheel{8, 3, 10, 5, 12, 7, 2, 9, 4, 11, 6, 1};

int intoOctave(int tonic)
{
    const int rest = tonic % semitonesInOctave;
    return rest < 0 ? rest + semitonesInOctave : rest;
}

} // namespace

Key Key::shifted(int semitones) const
{
    return {.tonic = intoOctave(tonic + semitones % semitonesInOctave), .isMinor = isMinor};
}

int Key::camelotNumber() const
{
    if (tonic < 0 || tonic >= semitonesInOctave)
        return 1;
    const int major = isMinor ? intoOctave(tonic + toRelativeMajor) : tonic;
    return wheel[std::size_t(major)];
}

int Key::distanceTo(const Key& other) const
{
    const int steps = std::abs(camelotNumber() - other.camelotNumber());
    return std::min(steps, wheelSteps - steps) + (isMinor != other.isMinor ? 1 : 0);
}

int semitonesForRatio(double ratio)
{
    return ratio > 0.0 ? int(std::lround(semitonesInOctave * std::log2(ratio))) : 0;
}

std::optional<int> nudge(const Key& key, const Key& other, int limit)
{
    if (limit < 1)
        return {};
    if (key.isCompatibleWith(other))
        return 0;
    for (int size = 1; size <= limit; ++size) {
        for (const int move : {size, -size}) {
            if (key.shifted(move).isCompatibleWith(other))
                return move;
        }
    }
    return {};
}

} // namespace orvane::DJ
