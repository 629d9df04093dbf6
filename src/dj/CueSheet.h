#pragma once

#include "dj/Mix.h"

#include <QHash>
#include <QSet>
#include <QString>

namespace orvane::DJ {

/// The tracklist of a mix at `bpm` beats a minute: one line for each track of the set, with when it comes in, whether
/// its tempo could not be matched, which `unmatched` tells by its title, and by how many semitones it was moved, which
/// `shifted` does. A title is one line, whatever it holds.
QString cueSheet(const Set& set, const QList<Move>& moves, double bpm, const QSet<QString>& unmatched,
                 const QHash<QString, int>& shifted = {});

} // namespace orvane::DJ
