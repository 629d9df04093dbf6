#include "demonstration/music/Form.h"

#include <array>
#include <cmath>

namespace orvane::demo {
namespace {

/// A section, and the share of the song that has gone by when it ends.
struct Plan
{
    double until;
    Section section;
};

const std::array<Plan, 7> plans{{
    {.until = 0.13, .section = {.energy = 0.45, .hats = true}},
    {.until = 0.36, .section = {.energy = 0.65, .backbeat = true, .hats = true, .bass = true}},
    {.until = 0.44, .section = {.energy = 0.7, .backbeat = true, .hats = true, .bass = true, .arpeggio = true}},
    {.until = 0.64,
     .section = {.energy = 1, .backbeat = true, .hats = true, .openHats = true, .bass = true, .lead = true}},
    {.until = 0.73, .section = {.energy = 0.5, .kickOnEveryBeat = false, .arpeggio = true}},
    {.until = 0.9,
     .section =
         {.energy = 1, .backbeat = true, .hats = true, .openHats = true, .bass = true, .arpeggio = true, .lead = true}},
    {.until = 1, .section = {.energy = 0.5, .hats = true, .bass = true}},
}};

/// A long song changes every other bar only, as music does.
int barAt(double share, int bars)
{
    const int grain = bars >= 16 ? 2 : 1;
    return share >= 1 ? bars : grain * static_cast<int>(std::lround(share * bars / grain));
}

} // namespace

std::vector<Section> formOf(int bars)
{
    std::vector<Section> form;
    int bar = 0;
    for (const Plan& plan : plans) {
        Section section = plan.section;
        section.firstBar = bar;
        section.bars = barAt(plan.until, bars) - bar;
        if (section.bars > 0)
            form.push_back(section);
        bar += section.bars;
    }
    return form;
}

} // namespace orvane::demo
