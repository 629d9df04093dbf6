#pragma once

#include <functional>

namespace orvane::Prompt {

/// A number from 0 to 1, both possible.
using Fraction = std::function<double()>;

/// Where a roll takes its luck from.
struct Chance
{
    Fraction fraction;
    /// A whole number from `least` to `most`, both possible.
    std::function<int(int least, int most)> integer;
};

/// The system's generator, which nobody seeds. Any thread.
Chance systemChance();

} // namespace orvane::Prompt
