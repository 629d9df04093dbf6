#pragma once

#include "trackfiles/library/Library.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace orvane::Library {

/// What a folder that was asked for came to.
struct NewFolder
{
    /// Absolute path of the folder; absent where none was made.
    std::optional<QString> path;
    /// The system's words where making it failed; empty where nothing was to be made.
    QString failure;
    /// One line for each file that stayed where it was.
    QStringList problems;

    bool operator==(const NewFolder&) const = default;
};

/// What moving to the trash came to.
struct Trashed
{
    int items = 0;
    /// One line for each item that stayed.
    QStringList problems;

    bool operator==(const Trashed&) const = default;
};

/// What copying into a folder came to.
struct CopiedIn
{
    int items = 0;
    /// One line for each item that was not copied.
    QStringList problems;

    bool operator==(const CopiedIn&) const = default;
};

/// Makes a folder in `parent`, with what is missing above it. `typed` is what the user typed: its safe form is the
/// name, and nothing is made where that is empty.
NewFolder makeFolder(const QString& parent, const QString& typed);

/// As above, and moves every file of the tracks among `selection` into it. Nothing is made without a track. What lies
/// in the folder is left alone.
NewFolder makeFolderWith(const QString& parent, const QString& typed, const QList<Entry>& selection);

/// Absolute paths of what a selection stands for: each track's files, each folder itself.
QStringList itemsOf(const QList<Entry>& selection);

/// Moves each item to the user's trash.
Trashed moveToTrash(const QStringList& items);

/// Whether an item dropped on a folder is taken: a folder, or a file that is something to a track.
bool isAccepted(const QString& item);

/// Copies the accepted ones of `items` into `folder` under their own names. What lies there already is left alone.
CopiedIn copyIn(const QStringList& items, const QString& folder);

} // namespace orvane::Library
