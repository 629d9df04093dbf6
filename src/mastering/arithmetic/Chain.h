#pragma once

#include "mastering/arithmetic/Channels.h"
#include "mastering/arithmetic/Reading.h"
#include "mastering/arithmetic/TruePeak.h"

namespace orvane::Master {

/// What mastering did to a signal.
struct Result
{
    Reading before;
    /// The same as `before` where the signal was left alone.
    Reading after;
    /// The gain stage's gain in dB; 0 if none was applied.
    double gainApplied = 0.0;
    /// Whether the signal exceeded the ceiling after the gain, so that the limiter ran.
    bool limited = false;

    bool operator==(const Result&) const = default;
};

/// Multiplies every sample of every channel.
void amplify(Channels& channels, double factor);

/// Brings the signal to `target` LUFS, in place, and its true peak to `ceiling` dBTP or, within 0.01 dB, as near as
/// four tries of the limiter get. A signal whose loudness cannot be measured stays as it is. `sampleRate` in Hz. Takes
/// next to no memory beside the signal's.
Result apply(double target, double ceiling, Channels& channels, double sampleRate);

/// What the gain and the limiter did to a signal.
struct Shaped
{
    /// As in `Result`.
    double gainApplied = 0.0;
    bool limited = false;
    /// Of the signal as it is now.
    Peaks peaks;
};

/// As `apply`, for a signal whose loudness is known to be `integrated`, a finite number; does not measure what comes
/// out.
Shaped shape(double integrated, double target, double ceiling, Channels& channels, double sampleRate);

} // namespace orvane::Master
