#pragma once

#include "mastering/Format.h"
#include "platform/sound/AudioWriter.h"

namespace orvane::Master {

/// What the format is to the writer of sound files, which knows no MP3: that counts as WAV.
AudioCodec codecOf(Format format);

} // namespace orvane::Master
