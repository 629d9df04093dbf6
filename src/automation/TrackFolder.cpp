#include "automation/TrackFolder.h"

#include "trackfiles/library/Library.h"
#include "trackfiles/namer/RenamePlan.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonObject>

#include <algorithm>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

QString fileNameOf(const QString& path)
{
    return path.sliced(path.lastIndexOf(u'/') + 1);
}

QString stemOf(const QString& fileName)
{
    return QFileInfo(fileName).completeBaseName();
}

/// The path without links in it, where it exists.
QString truePath(const QString& path)
{
    const QString found = QFileInfo(path).canonicalFilePath();
    return found.isEmpty() ? QDir::cleanPath(path) : found;
}

bool isBelow(const QString& folder, const QString& path)
{
    return truePath(path).startsWith(truePath(folder) + u'/');
}

std::optional<SavedTrack> savedTrack(const Library::Entry& entry)
{
    const TrackNamer::Source known = TrackNamer::sourceOf(entry);
    const QString title = known.title.isEmpty() ? TrackNamer::stripIndexPrefix(entry.name) : known.title;
    const auto clip = Clip::fromJson({
        {u"id"_s, u"local:"_s + entry.name},
        {u"title"_s, title},
        {u"metadata"_s, QJsonObject{{u"prompt"_s, known.lyrics}, {u"tags"_s, known.tags}}},
    });
    if (!clip)
        return std::nullopt;
    return SavedTrack{.clip = *clip, .base = entry.name};
}

QList<SavedTrack> savedTracks(const QList<Library::Entry>& entries)
{
    QList<SavedTrack> tracks;
    for (const Library::Entry& entry : entries) {
        if (!entry.files.contains(Library::Asset::audio))
            continue;
        if (const auto track = savedTrack(entry))
            tracks.append(*track);
    }
    return tracks;
}

} // namespace

bool belongs(const QString& fileName, const QString& base)
{
    if (!fileName.startsWith(base))
        return false;
    const QStringView rest = QStringView(fileName).sliced(base.size());
    if (rest.isEmpty() || rest == u" lyrics.txt" || rest == u" lyrics.text")
        return true;
    return rest.startsWith(u'.') && !rest.sliced(1).contains(u'.');
}

FolderListing FolderListing::of(const QString& folder)
{
    FolderListing listing;
    listing.folder_ = folder;
    listing.names_ = QDir(folder).entryList(QDir::Files, QDir::NoSort);
    std::ranges::sort(listing.names_);
    for (const QString& name : listing.names_)
        listing.byStem_[stemOf(name)].append(name);
    return listing;
}

QStringList FolderListing::belongingTo(const QString& base) const
{
    QStringList found;
    auto name = std::ranges::lower_bound(names_, base);
    for (; name != names_.end() && name->startsWith(base); ++name) {
        if (belongs(*name, base))
            found.append(*name);
    }
    return found;
}

std::optional<QString> FolderListing::audio(const QString& stem) const
{
    return firstOf({u"mp3"_s, u"m4a"_s, u"wav"_s}, stem);
}

std::optional<QString> FolderListing::artwork(const QString& stem) const
{
    return firstOf({u"jpg"_s, u"jpeg"_s, u"png"_s, u"webp"_s}, stem);
}

std::optional<QString> FolderListing::firstOf(const QStringList& extensions, const QString& stem) const
{
    const QStringList names = byStem_.value(stem);
    for (const QString& extension : extensions) {
        const auto has = [&extension](const QString& name) { return QFileInfo(name).suffix().toLower() == extension; };
        if (const auto name = std::ranges::find_if(names, has); name != names.end())
            return folder_ + u'/' + *name;
    }
    return std::nullopt;
}

QList<SavedTrack> tracksOnDisk(const QString& folder)
{
    return savedTracks(Library::read(folder).tracks());
}

QList<SavedTrack> selectedTrackOnDisk(const QString& folder, const QString& selected)
{
    if (!isBelow(folder, selected))
        return {};
    const QString stem = stemOf(fileNameOf(selected));
    QList<Library::Entry> entries = Library::read(folder).tracks();
    entries.removeIf([&stem](const Library::Entry& entry) {
        const auto isOfStem = [&stem](const QString& path) { return belongs(fileNameOf(path), stem); };
        return std::ranges::none_of(entry.allFiles(), isOfStem);
    });
    return savedTracks(entries);
}

} // namespace orvane
