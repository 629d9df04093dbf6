#pragma once

#include "dj/DJ.h"

#include <functional>

/// How a mix is made, written down as plainly as it can be, with no regard for time or memory: what the program's own
/// rendering is held against.
namespace orvane::test {

/// A track as it was read, and its record.
struct PlainTrack
{
    DJ::Analysis record;
    Channels channels;
    double rate = 44100.0;
};

struct PlainMix
{
    Channels channels;
    QList<DJ::Move> moves;
    QSet<QString> unmatched;
    QHash<QString, int> shifted;
    double bpm = 0.0;
    /// Frames of a bar.
    long bar = 0;
};

/// Brings a signal at 44100 Hz to so many LUFS under so many dB.
using Level = std::function<void(double target, double ceiling, Channels& channels)>;

/// The mix of at least one track. `tag` is the voice tag as it was prepared, if there is one, and `hits` where it goes.
PlainMix plainMix(const QList<PlainTrack>& tracks, const DJ::MixSettings& settings, const Level& level,
                  const Channels& tag = {}, const std::vector<std::int64_t>& hits = {});

} // namespace orvane::test
