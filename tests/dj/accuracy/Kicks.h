#pragma once

#include <string>
#include <vector>

namespace orvane::test {

/// How far the kicks of two tracks are apart in blends at 120 beats a minute, in ms, one distance for each beat.
struct KickDistances
{
    /// What the tracks have in common.
    std::string tracks;
    /// As they are mixed.
    std::vector<double> mixed;
    /// If each frame of a stretched track stayed where the track's tempo puts it; empty where there are no frames.
    std::vector<double> withoutSearch;
    /// If that place besides were not one of whole steps; empty likewise.
    std::vector<double> withoutRounding;
};

/// Listens to the kicks of tracks of many tempi.
std::vector<KickDistances> hearKicks();

} // namespace orvane::test
