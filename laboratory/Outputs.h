#pragma once

#include "laboratory/Arguments.h"
#include "mastering/Format.h"
#include "mastering/Watermark.h"

namespace orvane::lab {

/// The format called "wav", "flac", "alac", "aac" or "mp3"; else throws UsageError.
Master::Format formatNamed(const QString& name);

/// The MP3 rate of --rate, 320 without one; throws UsageError for none of the four.
Master::MP3Rate rateOf(const Arguments& options);

/// The voice tag of --tag, --level and --placement; switched off without the first.
Master::Watermark watermarkOf(const Arguments& options);

} // namespace orvane::lab
