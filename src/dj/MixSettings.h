#pragma once

#include "mastering/Format.h"
#include "mastering/Watermark.h"

#include <array>

namespace orvane::DJ {

/// How a set is made into a mix.
struct MixSettings
{
    /// The wanted blend from track to track, in seconds.
    double crossfade = 8.0;
    /// Whether every track is pulled to the set's tempo.
    bool matchTempo = true;
    /// Whether the bass goes from one track to the other in the course of a blend.
    bool filterSweep = true;
    /// Whether each track is brought to `levelTarget`, in LUFS.
    bool levelMatch = true;
    double levelTarget = -14.0;
    /// Whether the mix's very start and end are faded.
    bool fadeEdges = true;
    /// Whether tracks are cut in whole bars.
    bool beatMatch = true;
    /// A voice tag that is laid over the mix.
    Master::Watermark watermark;
    /// The largest change of speed, as a fraction from 0 to 1.
    double maxStretch = 0.06;
    /// By how many semitones at most a track is moved to suit the one before; 0 for not at all.
    int keyNudge = 0;
    /// Whether a track keeps its pitch when its tempo changes; otherwise it is played faster or slower like a record.
    bool preservePitch = true;
    Master::Format format = Master::Format::wav;
    /// Counts for MP3 alone.
    Master::MP3Rate mp3Rate = Master::MP3Rate::v320;

    bool operator==(const MixSettings&) const = default;
};

/// The choices of how far a track's tempo may be pulled, in whole per cent, in the order of the picker.
inline constexpr std::array tempoPulls{0, 6, 12, 20};

/// Sets what a choice of the tempo bar stands for: `matchTempo`, and `maxStretch` from whole per cent.
void setTempoPull(MixSettings& settings, int percent);

} // namespace orvane::DJ
