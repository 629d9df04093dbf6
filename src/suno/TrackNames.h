#pragma once

#include "suno/Clip.h"

#include <QHash>
#include <QString>

namespace orvane {

/// A title as a file name's stem: forbidden characters and line breaks become underscores, bidirectional controls and
/// byte order marks go, at most 120 characters and at most 200 bytes of UTF-8 (cut between characters as a person sees
/// them), without dots at its ends or blanks around it, in composed form. Where nothing remains, `fallback` as it
/// stands.
QString safeName(const QString& name, const QString& fallback);

/// What a clip is called on disk.
struct ClipNames
{
    QString safeTitle;
    /// What all its files' names begin with.
    QString base;

    bool operator==(const ClipNames&) const = default;
};

/// The names of the clip at the zero-based position `index` of the library. `existing` is what
/// `ExistingFiles::byTitle` found in the folder before the run.
ClipNames clipNames(const Clip& clip, int index, const QHash<QString, QString>& existing);

/// File extension of a cover, by its address: "png", "webp" or "jpg".
QString artworkExtension(const QString& address);

/// What the lyrics file of a clip holds.
QString lyricsText(const Clip& clip);

/// Timed lyrics with the lines spread evenly over `duration` seconds.
QString lrc(const QString& title, const QString& artist, const QString& lyrics, double duration);

/// Writes `contents` as UTF-8 to `path`, atomically, unless a file is there already; throws FileError.
void writeIfAbsent(const QString& path, const QString& contents);

} // namespace orvane
