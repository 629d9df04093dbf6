#pragma once

#include "mastering/arithmetic/Channels.h"

#include <cstddef>

namespace orvane::DJ {

/// What becomes of the bass in a blend.
enum class Bass
{
    AsItIs,
    /// The track that goes out loses it as the one that comes in gains it, so that the two do not add up.
    Swapped,
};

/// The first `frames` frames of `tail`, going out, with those of `head`, coming in: at equal power, so that two sounds
/// that have nothing to do with each other stay as loud as they are. Both have as many channels and at least as many
/// frames. `rate` in Hz.
Channels blend(const Channels& tail, const Channels& head, std::size_t frames, Bass bass, double rate);

} // namespace orvane::DJ
