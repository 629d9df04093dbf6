#pragma once

#include <vector>

namespace orvane::demo {

/// Which parts play in a bar, and how strongly.
struct Section
{
    int firstBar = 0;
    int bars = 0;
    /// 0 to 1.
    double energy = 0.5;
    bool kickOnEveryBeat = true;
    bool backbeat = false;
    bool hats = false;
    bool openHats = false;
    bool bass = false;
    bool arpeggio = false;
    bool lead = false;

    bool operator==(const Section&) const = default;
};

/// How a song of that many bars goes: beginning, verse, rise, chorus, break, chorus and end. The sections follow each
/// other without a gap; in a short song some are missing. `bars` is at least 1.
std::vector<Section> formOf(int bars);

} // namespace orvane::demo
