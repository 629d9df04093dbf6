#pragma once

#include <vector>

namespace orvane::demo {

/// The drums, each struck once: one channel, full at 1.
struct DrumKit
{
    std::vector<double> kick;
    std::vector<double> snare;
    std::vector<double> clap;
    std::vector<double> closedHat;
    std::vector<double> openHat;
    std::vector<double> crash;
};

/// A kit that is tuned by its seed.
DrumKit makeDrumKit(unsigned seed);

} // namespace orvane::demo
