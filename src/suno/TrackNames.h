#pragma once

#include "suno/Clip.h"

#include <QString>

namespace orvane {

/// A title as a file name's stem: forbidden characters become underscores, at most 120 characters and at most 200 bytes
/// of UTF-8 (cut between characters as a person sees them), without dots or blanks at its ends. Where nothing remains,
/// `fallback` as it stands.
QString safeName(const QString& name, const QString& fallback);

/// File extension of a cover, by its address: "png", "webp" or "jpg".
QString artworkExtension(const QString& address);

/// What the lyrics file of a clip holds.
QString lyricsText(const Clip& clip);

/// Timed lyrics with the lines spread evenly over `duration` seconds.
QString lrc(const QString& title, const QString& artist, const QString& lyrics, double duration);

/// Writes `contents` as UTF-8 to `path`, atomically, unless a file is there already; throws FileError.
void writeIfAbsent(const QString& path, const QString& contents);

} // namespace orvane
