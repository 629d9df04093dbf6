#pragma once

#include "automation/TrackFolder.h"
#include "video/Look.h"

#include <QSet>
#include <QString>

#include <optional>

namespace orvane {
class VideoEngine;

/// What the last stage of a run does to one track or to all of them, as functions of their arguments. Those that take a
/// folder or an order block on files; they are not for the main thread.
namespace VideoWork {

/// How much faster than playing the program's own engine is expected to be.
inline constexpr double ownEngineSpeed = 6.5;

/// The line under the title: the first three of the tags, or the program's name where there are none.
QString subtitleFor(const Clip& clip);

/// How long the tracks play, in seconds; a length below zero adds nothing.
double playingTime(const QList<SavedTrack>& tracks);

/// A span of seconds in short: "59s", "12m", "3h 5m".
QString humanTime(double seconds);

/// The stem of the video for files with that stem.
QString stemFor(const QString& stem);
/// Path of that video.
QString outputFor(const QString& folder, const QString& stem);

/// The stems of the videos that are there. A video on disk counts as done.
QSet<QString> renderedStems(const QString& folder);

/// One video to make.
struct Order
{
    /// Path of the recording.
    QString audio;
    /// Path of the picture.
    std::optional<QString> artwork;
    QString title;
    QString subtitle;
    Video::Look look;
    /// Path of the video.
    QString output;
};

/// Renders with the program's own engine. Gives the refusal, empty where the video stands.
QString render(VideoEngine& engine, const Order& order);

} // namespace VideoWork
} // namespace orvane
