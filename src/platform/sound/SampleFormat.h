#pragma once

#include "platform/sound/AudioReader.h"

struct AVFrame;

namespace orvane {

/// The frame's samples as planes of floats, into `planes`; false for a sample format that is not known. What is no
/// number or infinite becomes 0.
bool toPlanes(const AVFrame& frame, SoundPlanes& planes);

/// The nearest 24-bit number to a sample from -1 to 1, which -1 reaches and 1 does not.
int to24Bit(float sample);

/// A sample as a writer takes it: in single precision, held at -1 to 1.
float toWritten(double sample);

} // namespace orvane
