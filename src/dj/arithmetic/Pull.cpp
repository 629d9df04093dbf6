#include "dj/arithmetic/Pull.h"

#include "dj/arithmetic/Tempo.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace orvane::DJ {

namespace {

constexpr double slowest = 60.0;
constexpr double fastest = 200.0;

} // namespace

double medianTempo(std::vector<double> tempi)
{
    if (tempi.empty())
        return fallbackTempo;
    const auto middle = tempi.begin() + std::ptrdiff_t(tempi.size() / 2);
    std::nth_element(tempi.begin(), middle, tempi.end());
    return *middle;
}

double alignOctave(double bpm, double target)
{
    if (!(bpm > 0.0) || !(target > 0.0))
        return bpm;
    double best = bpm;
    for (const double candidate : {bpm / 2.0, bpm, bpm * 2.0}) {
        const bool isInRange = candidate >= slowest && candidate <= fastest;
        if (isInRange && std::abs(candidate - target) < std::abs(best - target))
            best = candidate;
    }
    return best;
}

double speedRatio(double median, double aligned, double maxStretch)
{
    return std::clamp(median / aligned, 1.0 - maxStretch, 1.0 + maxStretch);
}

} // namespace orvane::DJ
