#pragma once

#include <span>

namespace orvane::DJ {

/// How loud the samples are over all, from 0 for a mean power of -30 dB and below to 1 for -6 dB and above; 0 for none.
double energy(std::span<const double> samples);

} // namespace orvane::DJ
