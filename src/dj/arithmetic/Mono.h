#pragma once

#include "mastering/arithmetic/Channels.h"

#include <vector>

namespace orvane::DJ {

/// The only channel, or the mean of the first two over the first one's length; further ones are left out. There is at
/// least one channel.
std::vector<double> toMono(Channels channels);

} // namespace orvane::DJ
