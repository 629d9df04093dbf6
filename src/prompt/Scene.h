#pragma once

#include <QString>
#include <QStringList>

namespace orvane::Prompt {

/// A closed range of whole numbers.
struct Range
{
    int first = 0;
    int last = 0;

    bool operator==(const Range&) const = default;
};

/// One invented but plausible recording session: everything in it could be true of the same record.
struct Scene
{
    /// Unique, lower case with hyphens.
    QString id;
    QString family;
    /// Where it was made; the part before the first comma stands alone.
    QString place;
    /// Four digits.
    QString year;
    QStringList genres;
    /// Beats per minute.
    Range bpm;
    QStringList keys;
    QStringList moods;
    /// What the vocal does, a line each; Prompt::kind reads them.
    QStringList voices;
    QStringList details;
    /// What the arrangement does over time, a line each.
    QStringList motions;
    /// Noun phrases that follow "A song about ".
    QStringList subjects;

    bool operator==(const Scene&) const = default;
};

} // namespace orvane::Prompt
