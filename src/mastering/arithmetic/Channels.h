#pragma once

#include <vector>

namespace orvane {

/// Audio in memory: for each channel its samples, all of one length, nominally from -1 to 1, in the file's order of
/// channels (left, right, centre, LFE, left surround, right surround for six).
using Channels = std::vector<std::vector<double>>;

/// Whether there is nothing to hear: no channels, or an empty first one.
inline bool isEmpty(const Channels& channels)
{
    return channels.empty() || channels.front().empty();
}

} // namespace orvane
