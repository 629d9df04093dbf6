#pragma once

#include <cstddef>
#include <optional>
#include <span>

namespace orvane::DJ {

/// What stands for a tempo that cannot be measured, in beats a minute.
inline constexpr double fallbackTempo = 120.0;

/// The tempo in beats a minute, 70 to 180, at which an onset envelope of sound at `rate` Hz is most like itself, by
/// autocorrelation. `fallbackTempo` for an envelope of 64 values or fewer, or one too short or too coarse for the
/// range.
double tempo(std::span<const double> envelope, double rate);

/// The lag of that tempo, in envelope frames; none where `tempo` falls back. Of equally good lags the shortest.
std::optional<std::size_t> tempoLag(std::span<const double> envelope, double rate);

} // namespace orvane::DJ
