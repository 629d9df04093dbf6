#pragma once

#include "suno/Clip.h"
#include "suno/ExportPlan.h"
#include "suno/SaveClip.h"

#include <QList>
#include <QString>
#include <qcoro/qcorotask.h>

#include <chrono>
#include <functional>
#include <optional>

namespace orvane {

class Clock;

/// How far a batch has come in saving.
struct ExportProgress
{
    /// Tracks that are done, which is also the zero-based position of the one at hand.
    int done = 0;
    int count = 0;
    /// Stem of the files of the track at hand; empty when all are done.
    QString base;
    /// Absent while too little has been measured.
    std::optional<std::chrono::milliseconds> timeLeft;
    /// Title of the track at hand, safe for a file name; empty when all are done.
    QString title = {};

    bool operator==(const ExportProgress&) const = default;
};

/// What a batch came to.
struct SavedClips
{
    /// Positions of the clips whose audio is on disk or was not asked for, in order; the one that a stop cut short is
    /// not among them.
    QList<int> saved;
    /// Assets that could not be saved.
    int problems = 0;
    /// The batch ended before its last track was done.
    bool stopped = false;

    bool operator==(const SavedClips&) const = default;
};

/// Saves the assets of `clips`, one clip after the other in their order, under the names of `plan`, which has one entry
/// for each. `onProgress` hears of each clip before it is tried, and once when all are done. Ends at a stop of the
/// engine. Runs on the main thread's event loop and gives it a turn between clips.
QCoro::Task<SavedClips> saveClips(Engine& engine, Clock& clock, SaveOrder order, QList<Clip> clips,
                                  QList<PlannedTrack> plan, std::function<void(const ExportProgress&)> onProgress);

} // namespace orvane
