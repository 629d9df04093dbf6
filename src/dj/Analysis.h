#pragma once

#include "dj/arithmetic/Grid.h"
#include "dj/arithmetic/Key.h"
#include "mastering/Read.h"

#include <QList>
#include <QString>
#include <QUrl>

#include <optional>

namespace orvane::DJ {

/// What is known of a track once it has been listened to.
struct Analysis
{
    /// The track's file, which tells it from all others.
    QUrl url;
    QString title;
    /// Beats a minute, as the grid has them.
    double bpm = 0.0;
    Key key;
    /// How loud the track is over all, 0 to 1.
    double energy = 0.0;
    /// In seconds.
    double duration = 0.0;
    Grid grid;
    /// Beats a minute at which the track will be heard in its set; 0 where that is not known, and no tempo then.
    double playedBPM = 0.0;

    bool operator==(const Analysis&) const = default;
};

/// Tracks in the order in which they are played.
using Set = QList<Analysis>;

/// Listens to the whole file at `url`, of which the first two channels count. It is called `title`, or else by its
/// file's name without the extension. The same file gives the same record. Throws what `Master::read` throws, and
/// Failure (Unreadable) for a file that decodes to nothing. Blocks; any number of threads may analyse at once.
Analysis analyse(const QUrl& url, const std::optional<QString>& title = {});

/// As above for the sound that was read from `url`.
Analysis analyse(Master::Sound sound, const QUrl& url, const std::optional<QString>& title = {});

} // namespace orvane::DJ
