#pragma once

#include "mastering/arithmetic/Channels.h"
#include "mastering/arithmetic/Reading.h"

#include <QString>

namespace orvane::Master {

/// A file's sound in memory.
struct Sound
{
    Channels channels;
    /// In Hz.
    double sampleRate = 0.0;
};

/// The whole file at `path`, at its own sample rate and channel count. Throws Failure: CouldNotRead where it holds no
/// sample or more than fits, NotAFormat where it holds nothing to master; else FileError or SoundError with the
/// platform's words.
Sound read(const QString& path);

/// As `read`, as one channel: the file's only one, or the mean of its first two.
Sound readAsMono(const QString& path);

/// A file's sound and what measuring it tells.
struct MeasuredSound
{
    Sound sound;
    Reading reading;
};

/// As `read`, and measures the sound while it is decoded. Takes as many threads as there are processors.
MeasuredSound readAndMeasure(const QString& path);

} // namespace orvane::Master
