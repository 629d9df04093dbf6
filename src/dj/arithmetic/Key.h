#pragma once

#include <optional>

namespace orvane::DJ {

/// A musical key.
struct Key
{
    /// 0 to 11, semitones above C.
    int tonic = 0;
    bool isMinor = false;

    /// The key of the same mode so many semitones higher, or lower for a negative number.
    Key shifted(int semitones) const;

    /// The key's place on the wheel of fifths, 1 to 12, where relative keys share a number: 8 for C major and A minor.
    /// 1 for a tonic that is none.
    int camelotNumber() const;

    /// Steps on the wheel, the shorter way round, and one more where the modes differ.
    int distanceTo(const Key& other) const;

    /// Whether the two sound well in one another: the same key, a neighbour on the wheel, or the relative key.
    bool isCompatibleWith(const Key& other) const { return distanceTo(other) < 2; }

    bool operator==(const Key&) const = default;
};

/// By how many whole semitones sound rises that is played at `ratio` times its speed; 0 for a ratio not above 0.
int semitonesForRatio(double ratio);

/// The smallest move, in semitones of at most `limit` up or down, that makes `key` compatible with `other`; of two as
/// small the one upward, and 0 where they are compatible as they are. None where no move does, or `limit` is below 1.
std::optional<int> nudge(const Key& key, const Key& other, int limit);

} // namespace orvane::DJ
