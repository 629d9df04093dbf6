#pragma once

#include "trackfiles/keys/TrackKeys.h"

#include <QList>
#include <QString>

#include <optional>
#include <span>

namespace orvane {

struct Clip;

/// Turns what is known of a track into its name. The same input always gives the same name.
namespace TrackNamer {

/// What is known of a track.
struct Source
{
    /// Empty if unknown.
    QString title;
    /// Without the header lines of a saved lyrics file.
    QString lyrics;
    QString tags;
    /// The file's name without extension; empty where there is no file yet.
    QString fileStem;

    bool operator==(const Source&) const = default;

    static Source of(const Clip& clip);
};

/// A way of writing a name: how it is called by the program and by people.
struct Pattern
{
    QString id;
    QString label;
};

/// All patterns, the default one first.
std::span<const Pattern> patterns();

/// Reads a saved lyrics file: its header lines, then the lyrics.
Source sourceFromSidecar(const QString& sidecar, const QString& fileStem);

/// The bare name of the track at the position `index`, counted from 0: its title, else its file's name, else the line
/// that its lyrics repeat, else "Track N". Placeholders are no names.
QString base(const Source& source, int index);

/// `name` written by the pattern of that id; unchanged for an id that is not in the table.
QString apply(const QString& pattern, const QString& name, int index);

/// `base`, written by the pattern.
QString name(const Source& source, int index, const QString& pattern);

/// Whether a name says nothing: empty, "Untitled", "Track 12" and the like, or an identifier.
bool isPlaceholder(const QString& name);

/// The line that the lyrics repeat first, else their first line, fit for a title; absent without a line of at least
/// 6 characters.
std::optional<QString> hook(const QString& lyrics);

/// `text` without white space at its ends and without punctuation at its end.
QString trimmedForTitle(const QString& text);

} // namespace TrackNamer
} // namespace orvane
