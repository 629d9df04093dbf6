#pragma once

#include <cmath>

namespace orvane::Master {

/// The level of a magnitude, in dB; minus infinity for 0.
inline double decibels(double magnitude)
{
    return 20.0 * std::log10(magnitude);
}

/// The factor that a gain of so many dB stands for.
inline double linearGain(double decibels)
{
    return std::pow(10.0, decibels / 20.0);
}

} // namespace orvane::Master
