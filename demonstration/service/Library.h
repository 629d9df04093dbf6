#pragma once

#include "demonstration/music/Song.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

#include <optional>

namespace orvane::demo {

class JsonWriter;

/// In what form the projects are told of.
enum class ProjectForm
{
    list,
    wrappedInProjects,
    wrappedInProject,
    wrappedInData,
    wrappedInResults,
    wrappedInItems,
    nested,
    single
};

/// What the stand-in library holds.
struct LibraryOptions
{
    /// Tracks in the whole library; the first 15 are the telling ones (no audio address, no lyrics, untitled, two with
    /// one title, hostile titles), the rest are plain.
    int tracks = 16;
    /// Leaves the telling ones out.
    bool plainOnly = false;
    int pageSize = 50;
    int projects = 2;
    ProjectForm projectForm = ProjectForm::wrappedInProjects;
    /// The same seed gives the same library, byte for byte.
    unsigned seed = 1;
    /// Length of the composed recordings, in seconds.
    double shortestSeconds = 20;
    double longestSeconds = 60;
    /// Bytes of lyrics for each track that has any, made by repeating the written ones; 0 for these as they are.
    int lyricsBytes = 0;
    /// When set, every recording is this many bytes of one short recording over and over, made as it is sent.
    std::optional<qint64> assetBytes;
};

/// One track as it truly is.
struct Track
{
    QString id;
    /// As the feed tells it; a track without a title has none here.
    QString title;
    bool isUntitled = false;
    bool hasLyrics = true;
    bool hasAudioAddress = true;
    /// "jpg", "png" or "webp".
    QString artworkExtension;
    QString tags;
    Song song;
    /// "C", "F# minor" and so on.
    QString key;
};

/// The whole library, made up from its options: nothing is kept but what they are.
class Library
{
public:
    explicit Library(LibraryOptions options);

    const LibraryOptions& options() const { return options_; }

    int size() const { return options_.tracks + added_; }

    /// Puts newly made tracks at the head of the feed.
    void addAtHead(int count) { added_ += count; }

    /// The track at a position of the feed, counted from 0.
    Track at(int position) const;
    /// Its position; absent for an unknown identifier.
    std::optional<int> positionOf(const QString& id) const;
    QString lyricsAt(int position) const;

    /// Positions of the tracks of a project, or of all where its identifier is empty.
    QList<int> positionsOf(const QString& projectId) const;
    /// A project's number; absent for an unknown identifier.
    std::optional<int> projectOf(const QString& projectId) const;
    /// A page of the feed, counted from 1, of the whole library or of a project; empty behind the end.
    QByteArray page(int number, const QString& projectId, const QByteArray& siteAddress) const;
    /// The answer of the project addresses.
    QByteArray projects() const;
    QString projectId(int project) const;
    QString projectName(int project) const;

private:
    /// A track's number for life: the first ones made have 0 and up, those added later the next.
    int ordinalAt(int position) const;

    /// Whether the track with this number is the telling one of that place.
    bool tells(int ordinal, int place) const { return !options_.plainOnly && ordinal == place; }

    QString title(int ordinal) const;
    QString trackId(int ordinal) const;
    void writeRecord(JsonWriter& json, int position, const QString& site) const;

    LibraryOptions options_;
    /// Numbers by identifier, as far as they have been asked for.
    mutable QHash<QString, int> ordinals_;
    int added_ = 0;
};

} // namespace orvane::demo
