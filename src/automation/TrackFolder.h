#pragma once

#include "suno/Clip.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace orvane {

/// A track that a run works on: what is known of it, and the stem that its files had when the stage began.
struct SavedTrack
{
    Clip clip;
    QString base;

    bool operator==(const SavedTrack&) const = default;
};

/// Whether the file of that name is one of the track with the stem `base`: the stem alone, with one extension, or as
/// its lyrics file.
bool belongs(const QString& fileName, const QString& base);

/// What lies in a folder, listed once. A folder that cannot be listed counts as empty.
class FolderListing
{
public:
    FolderListing() = default;

    /// Lists the files that lie directly in `folder`, an absolute path, and are not hidden. Blocks.
    static FolderListing of(const QString& folder);

    /// Names of the files that belong to the stem, in plain order.
    QStringList belongingTo(const QString& base) const;

    /// Path of the recording with that stem: an MP3 before an M4A before a WAV. Absent where there is none.
    std::optional<QString> audio(const QString& stem) const;

    /// Path of the picture with that stem: JPEG before PNG before WebP. Absent where there is none.
    std::optional<QString> artwork(const QString& stem) const;

private:
    std::optional<QString> firstOf(const QStringList& extensions, const QString& stem) const;

    QString folder_;
    /// In plain order.
    QStringList names_;
    QHash<QString, QStringList> byStem_;
};

/// The tracks with audio that lie in `folder`, in natural order, with what their lyrics files say. Opens those files,
/// so not for the main thread.
QList<SavedTrack> tracksOnDisk(const QString& folder);

/// As above, the one track only that the audio file at the path `selected` is of; none where that is not in the folder
/// or below it.
QList<SavedTrack> selectedTrackOnDisk(const QString& folder, const QString& selected);

} // namespace orvane
