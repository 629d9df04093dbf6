#pragma once

#include "mastering/arithmetic/Channels.h"
#include "mastering/arithmetic/Reading.h"

namespace orvane::test {

/// What libebur128 reads of a signal. It takes a short-term value a second where we take ten, so that ten of its
/// meters, each beginning a tenth of a second after the other, give their range together.
Master::Reading libraryOpinion(const Channels& channels, double sampleRate);

} // namespace orvane::test
