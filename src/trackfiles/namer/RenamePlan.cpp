#include "trackfiles/namer/RenamePlan.h"

#include "platform/filesystem/MoveFile.h"
#include "platform/filesystem/ReadFile.h"
#include "platform/text/Characters.h"
#include "suno/TrackNames.h"
#include "trackfiles/namer/UniqueNames.h"

#include <QFileInfo>
#include <QStringDecoder>

#include <algorithm>

namespace orvane::TrackNamer {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Far above any lyrics, far below what would hold up a plan.
constexpr qint64 mostSidecarBytes = qint64{4} * 1024 * 1024;

QString fileName(const QString& path)
{
    return path.sliced(path.lastIndexOf(u'/') + 1);
}

std::optional<QString> readText(const QString& path)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    try {
        QString text = decoder(readRegularFile(path, mostSidecarBytes));
        return decoder.hasError() ? std::nullopt : std::optional(text);
    } catch (const FileError&) {
        return std::nullopt;
    }
}

QStringList filesToMove(const Library::Entry& entry)
{
    QStringList files = entry.allFiles();
    files.removeIf([&entry](const QString& path) { return !fileName(path).startsWith(entry.name); });
    std::ranges::sort(files, {}, fileName);
    return files;
}

QString wantedName(const Library::Entry& entry, int index, const QString& pattern,
                   const std::optional<QStringList>& invented, const QHash<QString, QString>& overrides)
{
    const QString typed = trimmedWhiteSpace(overrides.value(entry.name)).toString();
    if (!typed.isEmpty())
        return typed;
    if (invented && index < invented->size() && !invented->at(index).isEmpty())
        return apply(pattern, invented->at(index), index);
    return name(sourceOf(entry), index, pattern);
}

void moveToNewStem(const Rename& row, const QString& path, Performed& result)
{
    const QString oldName = fileName(path);
    const QString newName = row.to + oldName.mid(row.from.size());
    const QString target = path.chopped(oldName.size()) + newName;
    if (target == path)
        return;
    try {
        moveWithoutReplacing(path, target);
        ++result.renamed;
    } catch (const FileError& error) {
        if (error.code() == EEXIST)
            result.problems.append(newName + u" already exists"_s);
        else
            result.problems.append(oldName + u": "_s + error.reason());
    }
}

} // namespace

Source sourceOf(const Library::Entry& entry)
{
    const QStringList& sidecars = entry.files[Library::Asset::lyrics];
    const auto text = sidecars.isEmpty() ? std::nullopt : readText(sidecars.first());
    if (text)
        return sourceFromSidecar(*text, entry.name);
    return {.title = {}, .lyrics = {}, .tags = {}, .fileStem = entry.name};
}

QList<Rename> plan(const QString& folder, const QString& pattern, const std::optional<QStringList>& invented,
                   const QHash<QString, QString>& overrides)
{
    return planFor(Library::read(folder).tracks(), pattern, invented, overrides);
}

QList<Rename> planFor(QList<Library::Entry> tracks, const QString& pattern, const std::optional<QStringList>& invented,
                      const QHash<QString, QString>& overrides)
{
    std::ranges::sort(tracks, {}, &Library::Entry::name);
    QList<Rename> rows;
    rows.reserve(tracks.size());
    UniqueNames names;
    for (int index = 0; index < tracks.size(); ++index) {
        const Library::Entry& track = tracks[index];
        const QString wanted = wantedName(track, index, pattern, invented, overrides);
        const QString safe = safeName(wanted, u"Track %1"_s.arg(index + 1));
        rows.append({.from = track.name, .to = names.take(safe), .files = filesToMove(track)});
    }
    return rows;
}

Performed perform(const QList<Rename>& plan)
{
    Performed result;
    for (const Rename& row : plan) {
        if (!row.changes())
            continue;
        for (const QString& path : row.files)
            moveToNewStem(row, path, result);
    }
    return result;
}

} // namespace orvane::TrackNamer
