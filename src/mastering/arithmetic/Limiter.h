#pragma once

#include "mastering/arithmetic/Channels.h"
#include "mastering/arithmetic/TruePeak.h"

namespace orvane::Master {

/// Holds every sample at or under `ceiling` dB, in place: a feed-forward peak limiter that looks 5 ms ahead, attacks at
/// once, releases by 6.02 dB in 50 ms and gives all channels one gain; a hard clamp makes the ceiling absolute.
/// `sampleRate` in Hz. Every channel is at least as long as the first. Does nothing to an empty signal.
void limit(Channels& channels, double ceiling, double sampleRate);

/// The peaks of what `limit` makes of the signal, which stays as it is. Takes next to no memory.
Peaks peaksLimited(const Channels& channels, double ceiling, double sampleRate);

} // namespace orvane::Master
