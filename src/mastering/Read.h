#pragma once

#include "mastering/arithmetic/Channels.h"

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

} // namespace orvane::Master
