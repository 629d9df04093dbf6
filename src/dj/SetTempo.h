#pragma once

#include "dj/Analysis.h"
#include "dj/MixSettings.h"
#include "dj/arithmetic/Pull.h"

namespace orvane::DJ {

/// The tempo that a set aims at, in beats a minute: its tracks' median, of an even count the upper of the two in the
/// middle; 120 for an empty set.
double medianBPM(const Set& set);

/// The set as it will be heard. Where its speed is changed like a record's, each track's key moves with its speed and
/// its `playedBPM` is set; all else stays as it was analysed. Otherwise the set as it is.
Set asMixed(const Set& set, const MixSettings& settings);

} // namespace orvane::DJ
