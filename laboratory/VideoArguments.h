#pragma once

#include "laboratory/Arguments.h"
#include "video/FramePainter.h"
#include "video/Look.h"

namespace orvane::lab {

/// The options of every verb that makes pictures: those with a value, and those without.
QStringList lookOptions();
QStringList lookFlags();

/// The look that the options ask for. Throws UsageError.
Video::Look lookOf(const Arguments& arguments);

/// The path of the artwork; empty for none.
QString artworkOf(const Arguments& arguments);

} // namespace orvane::lab
