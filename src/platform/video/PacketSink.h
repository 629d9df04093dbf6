#pragma once

#include <functional>

struct AVPacket;
struct AVRational;

namespace orvane {

/// Takes an encoder's packets, with the unit of their times. What it throws passes through the encoder.
using PacketSink = std::function<void(AVPacket& packet, AVRational timeBase)>;

} // namespace orvane
