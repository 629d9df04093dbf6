#pragma once

#include <array>
#include <cstddef>

/// The inner loop of the time stretch.
namespace orvane::Master::Likeness {

/// Places at which a frame is tried, and how far apart they are.
inline constexpr std::size_t placeCount = 56;
inline constexpr std::size_t placeStep = 8;

/// How many samples of a frame are compared, and how far apart those are.
inline constexpr std::size_t termCount = 256;
inline constexpr std::size_t termStep = 4;

/// Samples that `atEachPlace` reads from the first place on.
inline constexpr std::size_t reach = (placeCount - 1) * placeStep + (termCount - 1) * termStep + 1;

/// For each place the sum of the products of what stands at `written` and at that place of `samples`, in the order of
/// the terms, so that it is the same number on every processor.
std::array<double, placeCount> atEachPlace(const double* written, const double* samples);

} // namespace orvane::Master::Likeness
