#pragma once

#include "platform/sound/AudioReader.h"

#include <cstddef>
#include <cstdint>
#include <span>

struct AVFrame;

namespace orvane {

/// The frame's samples as planes of floats, into `planes`; false for a sample format that is not known. What is no
/// number or infinite becomes 0.
bool toPlanes(const AVFrame& frame, SoundPlanes& planes);

/// Samples as a writer takes them, in single precision and held at -1 to 1, one at every `stride`th place of `target`.
void toWritten(std::span<const double> samples, float* target, std::size_t stride);

/// As above, as the nearest 24-bit numbers, in the upper three bytes: -1 reaches full scale and 1 does not.
void to24Bit(std::span<const double> samples, std::int32_t* target, std::size_t stride);

} // namespace orvane
