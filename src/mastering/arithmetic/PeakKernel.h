#pragma once

#include <array>
#include <cstddef>

namespace orvane::Master::PeakKernel {

/// Input samples that one value between samples is made of.
inline constexpr std::size_t tapCount = 32;
/// Input positions that `largestBetween` looks behind at once.
inline constexpr std::size_t blockLength = 32;

/// The taps of the three values between a sample and the next, at a quarter, a half and three quarters.
using Taps = std::array<std::array<double, tapCount>, 3>;

/// The largest magnitude of `count` samples.
double largestMagnitude(const double* samples, std::size_t count);

/// The largest magnitude of each of `blocks` blocks of `blockLength` samples, into `largest`.
void largestOfBlocks(const double* samples, std::size_t blocks, double* largest);

/// The largest magnitude between samples at `blockLength` consecutive positions, the first of which is made of
/// `samples[0]` to `samples[tapCount - 1]`. Reads `blockLength + tapCount - 1` samples.
double largestBetween(const double* samples, const Taps& taps);

} // namespace orvane::Master::PeakKernel
