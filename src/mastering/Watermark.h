#pragma once

#include "mastering/arithmetic/Channels.h"
#include "mastering/arithmetic/Placement.h"

#include <QString>

#include <optional>

namespace orvane::Master {

/// An audio tag of the user's own that is mixed into what is written, and how.
struct Watermark
{
    bool isOn = false;
    /// The tag's file; an absolute path.
    std::optional<QString> file;
    /// Where the tag sits against the music, in dB: negative is under it.
    double level = -18.0;
    Placement placement;

    /// Whether there is something to mix in; the file may be gone all the same.
    bool isUsable() const { return isOn && file.has_value(); }

    bool operator==(const Watermark&) const = default;
};

/// The tag at `path`, ready to be mixed: at `sampleRate` Hz, with `channelCount` channels (at least one) and `level` dB
/// against `reference` LUFS. Where either loudness does not exist it keeps its own level. Throws what `read` throws,
/// and Failure (CouldNotPrepare) for a tag without audio.
Channels prepareTag(const QString& path, double sampleRate, std::size_t channelCount, double level, double reference);

/// As above for `track`: its channel count, and its own loudness as the reference.
Channels prepareTag(const QString& path, const Channels& track, double sampleRate, double level);

/// Mixes the tag into `channels` and returns how many times. A tag that cannot be read never stops a master: it counts
/// as none. `seed` decides where scattered hits land.
int applyWatermark(const Watermark& watermark, Channels& channels, double sampleRate, std::int64_t seed);

/// As above, where the track's own loudness, `reference`, has just been measured.
int applyWatermark(const Watermark& watermark, Channels& channels, double sampleRate, std::int64_t seed,
                   double reference);

} // namespace orvane::Master
