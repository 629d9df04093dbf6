#pragma once

#include "demonstration/music/Stage.h"

#include <span>

namespace orvane::demo {

/// Makes room for the kick: the level drops at each of these samples and is back after `seconds`.
void duck(Stage& stage, std::span<const std::size_t> kicks, double seconds, double depth);

/// Adds repeats that go from side to side, `delay` samples apart, each `feedback` of the one before.
void addEcho(Stage& stage, std::size_t delay, double feedback, double gain);

/// Adds a room's sound.
void addRoom(Stage& stage, double gain);

/// Rounds the peaks off and brings the highest to `peak`; silence stays silence.
void finish(Stage& stage, double peak);

} // namespace orvane::demo
