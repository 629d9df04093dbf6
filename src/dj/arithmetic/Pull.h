#pragma once

#include <vector>

namespace orvane::DJ {

/// The middle one of so many tempi; of an even count the upper of the two in the middle, and 120 for none.
double medianTempo(std::vector<double> tempi);

/// Of half the tempo, the tempo itself and its double, all in beats a minute, the one nearest to `target`. Half and
/// double count from 60 to 200 only. The tempo as it is where one of the two is not above 0.
double alignOctave(double bpm, double target);

/// How fast a track at `aligned` beats a minute (above 0) plays in a set at `median`: above 1 is faster. At most
/// `maxStretch`, as a fraction of 0 and more, from 1.
double speedRatio(double median, double aligned, double maxStretch);

} // namespace orvane::DJ
