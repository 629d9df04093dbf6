#pragma once

#include "dj/Analysis.h"

#include <QList>
#include <QString>
#include <QUrl>

namespace orvane::DJ {

/// A blend from one track to the next.
struct Move
{
    /// The titles of the track that goes out and of the one that comes in.
    QString from;
    QString to;
    /// Where in the mix the blend begins, in seconds.
    double atSeconds = 0.0;
    /// The codes of both keys as they were analysed, as "8A → 9A".
    QString keyMove;
    /// By how many beats a minute the incoming track is faster than the outgoing one, as analysed.
    double tempoChange = 0.0;

    bool operator==(const Move&) const = default;
};

/// The move from one track to the next that begins `atSeconds`.
Move moveBetween(const Analysis& from, const Analysis& to, double atSeconds);

/// What a set has become.
struct Mix
{
    /// The sound.
    QUrl url;
    /// The tracklist.
    QUrl cue;
    QList<Move> moves;
    /// In seconds.
    double duration = 0.0;
    /// The tempo of the set, in beats a minute.
    double bpm = 0.0;

    bool operator==(const Mix&) const = default;
};

} // namespace orvane::DJ
