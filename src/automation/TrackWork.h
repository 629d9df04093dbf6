#pragma once

#include "automation/TrackFolder.h"
#include "mastering/Format.h"
#include "mastering/Watermark.h"
#include "mastering/arithmetic/Chain.h"
#include "suno/LogLevel.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace orvane {

/// What a run does to one track or to all of them, as functions of their arguments. All of them block on files; none is
/// for the main thread. Failures come back as the words to show.
namespace TrackWork {

/// The name of each track by the pattern, in order.
QStringList namesOf(const QList<SavedTrack>& tracks, const QString& pattern);

/// Stems for the tracks of those names: safe for the file system, and no two alike in more than case. A name that is
/// missing leaves its track out.
QStringList stemsFor(const QStringList& names);

/// A file that was not renamed.
struct NotRenamed
{
    QString file;
    QString target;
    /// Why moving it failed; empty where something lies at the target.
    QString reason;

    bool operator==(const NotRenamed&) const = default;
};

struct Renamed
{
    /// Files, not tracks.
    int moved = 0;
    QList<NotRenamed> problems;

    bool operator==(const Renamed&) const = default;
};

/// Moves `files` of `folder`, whose names begin with `base`, to the same names with `stem` in its place,
/// recordings last. What lies at a target is left alone.
Renamed renameFiles(const QString& folder, const QStringList& files, const QString& base, const QString& stem);

/// Writes "Tracklist.txt" into `folder`, one numbered line for each name. Gives the refusal, empty where it stands.
QString writeTracklist(const QStringList& names, const QString& folder);

/// One track to tag.
struct TagOrder
{
    /// Path of the MP3.
    QString audio;
    /// Path of the picture.
    std::optional<QString> artwork;
    Clip clip;
    QString album;
    /// Position from 1.
    int number = 1;
    int total = 1;
};

/// Replaces the tag of the MP3. Gives the refusal, empty where the tag stands. A picture that cannot be read counts as
/// absent.
QString tagTrack(const TagOrder& order);

/// One track to master.
struct MasterOrder
{
    /// Path of the recording.
    QString audio;
    /// Path of the master, which is replaced.
    QString output;
    /// In LUFS and dBTP.
    double target = 0.0;
    double ceiling = 0.0;
    Master::Output as;
    Master::Watermark watermark;
};

struct Mastered
{
    Master::Result result;
    /// Why there is no master; empty where there is.
    QString refusal;
};

Mastered masterTrack(const MasterOrder& order);

/// Makes the folder with those above it. Gives the refusal, empty where it stands.
QString makeFolder(const QString& path);

/// Makes the folder of masters in `folder`, which is not made itself: where it has vanished, as with the disk that it
/// was on, nothing takes its place. Gives the refusal, empty where it stands.
QString makeMasteredFolder(const QString& folder);
/// The same for the folder of videos.
QString makeVideosFolder(const QString& folder);

/// Removes what a killed run left half-written in the folder and in those of masters and videos.
void removeLeftovers(const QString& folder);

} // namespace TrackWork

} // namespace orvane
