#pragma once

#include "trackfiles/library/FilesByAsset.h"

#include <QDateTime>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

namespace orvane::Library {

/// One row of a folder: a subfolder, or a track with its files.
struct Entry
{
    enum class Kind
    {
        folder,
        track
    };

    Kind kind = Kind::track;
    /// A folder's own name, or a track's key.
    QString name;
    /// Absolute path of the folder, or of the first file of the track that was met.
    QString path;
    /// Absolute paths by what the files are, in the order in which they were met; empty for a folder.
    FilesByAsset files;
    /// Sum of the sizes of the track's files; 0 for a folder.
    qint64 bytes = 0;
    /// The newest date among the track's files, or the folder's own; `distantPast` where none could be read.
    QDateTime modified;
    /// A folder's visible children; 0 for a track and for a folder that cannot be listed.
    qint64 childCount = 0;
    /// Seconds; absent until somebody opens the audio.
    std::optional<double> duration;

    bool operator==(const Entry&) const = default;

    /// What the track has at least one file of.
    QSet<Asset> has() const;
    QStringList allFiles() const;
};

/// What is in a folder.
struct Contents
{
    /// Folders first, then tracks, each in natural order of their names.
    QList<Entry> entries;
    /// The folder exists and could not be listed.
    bool unreadable = false;
    /// Of audio and artwork, what none of the tracks has; empty without tracks.
    QList<Asset> missing;

    bool operator==(const Contents&) const = default;

    QList<Entry> folders() const;
    QList<Entry> tracks() const;
    qint64 bytes() const;
};

/// A date before every file.
QDateTime distantPast();

/// Looks at `folder`, an absolute path, one level deep, without opening a file. Never fails: a folder that does not
/// exist reads as an empty one.
Contents read(const QString& folder);

/// The last `limit` components of `path`, joined by " › ".
QString crumbs(const QString& path, int limit);

/// Sorts `entries` by name as a person would: numbers by value, case at last.
void sortNaturally(QList<Entry>& entries);

} // namespace orvane::Library
