#pragma once

#include "mastering/arithmetic/Channels.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace orvane::Master {

/// `tag` with `count` channels, at least one: too few are repeated in turn, of too many the first stay.
Channels withChannelCount(Channels tag, std::size_t count);

/// `tag` amplified to lie `level` dB over `reference` LUFS (under it, when negative). Where either loudness does not
/// exist it stays as it is. `sampleRate` in Hz.
Channels atLevel(Channels tag, double level, double reference, double sampleRate);

/// Adds `tag` to `channels` at each frame of `hits`, faded over 220 samples at either end. `bufferStart` is the frame
/// of the first sample in `channels`; what lies outside them is left out. Overlapping hits add up.
void stamp(Channels& channels, const Channels& tag, std::span<const std::int64_t> hits, std::int64_t bufferStart);

/// As above, to the frames of `channels` from `first` up to `end` alone; `bufferStart` is that of `first`.
void stamp(Channels& channels, std::size_t first, std::size_t end, const Channels& tag,
           std::span<const std::int64_t> hits, std::int64_t bufferStart);

} // namespace orvane::Master
