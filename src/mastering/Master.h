#pragma once

#include "mastering/Failure.h"
#include "mastering/Format.h"
#include "mastering/Read.h"
#include "mastering/Watermark.h"
#include "mastering/Write.h"
#include "mastering/arithmetic/Chain.h"
#include "mastering/arithmetic/Loudness.h"
#include "mastering/arithmetic/Resample.h"
#include "mastering/arithmetic/Stretch.h"

#include <QString>

namespace orvane::Master {

/// Masters the file `input` to `output`, for `target` LUFS and `ceiling` dBTP, at its own sample rate and channel
/// count: read, mix in the watermark, gain and limit, write. Throws what `read` and `write` throw; then nothing has
/// appeared at `output`. Blocks; call it off the main thread.
Result master(const QString& input, const QString& output, double target, double ceiling, const Output& as,
              const Watermark& watermark = {});

} // namespace orvane::Master
