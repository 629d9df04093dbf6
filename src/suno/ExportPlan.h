#pragma once

#include "suno/Clip.h"
#include "suno/TrackNames.h"

#include <QList>
#include <QString>

namespace orvane {

/// Under which name the files of one track go into the folder.
struct PlannedTrack
{
    ClipNames names;
    /// An earlier run left files of that title.
    bool isKnown = false;

    bool operator==(const PlannedTrack&) const = default;
};

/// Names the tracks in the order in which the library was read, as the files that lie in `folder` ask for. Reads the
/// folder once; of any length, so not for the main thread.
QList<PlannedTrack> planExport(const QList<Clip>& clips, const QString& folder);

} // namespace orvane
