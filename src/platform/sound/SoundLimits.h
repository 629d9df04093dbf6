#pragma once

namespace orvane {

/// What a sound file may be, tested before anything is made room for.
inline constexpr int maximumSampleRate = 192000;
inline constexpr int maximumChannelCount = 8;
inline constexpr int maximumHours = 24;

} // namespace orvane
