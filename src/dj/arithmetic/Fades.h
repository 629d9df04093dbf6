#pragma once

#include "mastering/arithmetic/Channels.h"

namespace orvane::DJ {

/// Raises the first `seconds` in a straight line from silence, in place, or all of it where it is shorter. `rate` in
/// Hz.
void fadeIn(Channels& channels, double seconds, double rate);

/// Lowers all of it in a straight line to silence, in place; the rate does not matter.
void fadeOut(Channels& channels, double rate);

} // namespace orvane::DJ
