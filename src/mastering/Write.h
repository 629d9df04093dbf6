#pragma once

#include "mastering/Format.h"
#include "mastering/arithmetic/Channels.h"

#include <QString>

namespace orvane::Master {

/// Writes `channels` to `path` at `sampleRate` Hz, through the temporary file "." + name + ".new" beside it; what was
/// there stays until the new file is whole. An empty signal writes nothing. Throws Failure (CouldNotPrepare, the MP3
/// codes), or FileError or SoundError with the platform's words.
void write(const Channels& channels, double sampleRate, const Output& output, const QString& path);

/// As `write`, as MP3: the first two channels at a constant bit rate. An empty signal fails with Mp3NoAudio.
void writeMP3(const Channels& channels, double sampleRate, MP3Rate rate, const QString& path);

} // namespace orvane::Master
