#pragma once

#include "trackfiles/library/Library.h"
#include "trackfiles/namer/NameRules.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

namespace orvane::TrackNamer {

/// One track's way from its present stem to its new one.
struct Rename
{
    QString from;
    QString to;
    /// Absolute paths of every file that moves, sorted by name.
    QStringList files;

    bool operator==(const Rename&) const = default;

    bool changes() const { return from != to; }
};

/// What a carried-out plan came to.
struct Performed
{
    /// Files, not tracks.
    int renamed = 0;
    /// One line for each file that stayed.
    QStringList problems;

    bool operator==(const Performed&) const = default;
};

/// What the files of a track tell of it: its stem, and what its first lyrics file says where that can be read as UTF-8
/// and holds at most 4 MiB. Opens that file, so not for the main thread.
Source sourceOf(const Library::Entry& entry);

/// A new name for every track of `folder`, in the plain order of their present names. `invented` holds a name for each
/// position, an empty one where there is none; `overrides` maps a present name to the text that the user typed. Names
/// are safe for the file system and differ in more than case. A lyrics file that cannot be read counts as absent.
QList<Rename> plan(const QString& folder, const QString& pattern, const std::optional<QStringList>& invented = {},
                   const QHash<QString, QString>& overrides = {});

/// As above, for the tracks of a folder that was read already.
QList<Rename> planFor(QList<Library::Entry> tracks, const QString& pattern,
                      const std::optional<QStringList>& invented = {}, const QHash<QString, QString>& overrides = {});

/// Moves the files of the rows that change; what lies at a new name is left alone, and nothing is rolled back.
Performed perform(const QList<Rename>& plan);

} // namespace orvane::TrackNamer
