#include "dj/SetTempo.h"

#include <vector>

namespace orvane::DJ {

namespace {

Analysis asPlayed(Analysis track, double median, double maxStretch)
{
    const double aligned = alignOctave(track.bpm, median);
    if (!(aligned > 0.0))
        return track;
    const double ratio = speedRatio(median, aligned, maxStretch);
    track.key = track.key.shifted(semitonesForRatio(ratio));
    track.playedBPM = aligned * ratio;
    return track;
}

} // namespace

double medianBPM(const Set& set)
{
    std::vector<double> tempi;
    for (const Analysis& track : set)
        tempi.push_back(track.bpm);
    return medianTempo(std::move(tempi));
}

Set asMixed(const Set& set, const MixSettings& settings)
{
    if (!settings.matchTempo || settings.preservePitch)
        return set;
    const double median = medianBPM(set);
    Set played;
    for (const Analysis& track : set)
        played.append(asPlayed(track, median, settings.maxStretch));
    return played;
}

} // namespace orvane::DJ
