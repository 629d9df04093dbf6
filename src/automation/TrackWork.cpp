#include "automation/TrackWork.h"

#include "mastering/Master.h"
#include "platform/filesystem/AtomicFile.h"
#include "platform/filesystem/MoveFile.h"
#include "platform/filesystem/ReadFile.h"
#include "platform/filesystem/StagingFile.h"
#include "platform/filesystem/StagingLeftovers.h"
#include "suno/TrackNames.h"
#include "trackfiles/keys/TrackKeys.h"
#include "trackfiles/namer/NameRules.h"
#include "trackfiles/namer/UniqueNames.h"
#include "trackfiles/tags/Tags.h"

#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <filesystem>

namespace orvane::TrackWork {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A tag says its size in 28 bits; a cover anywhere near that is none.
constexpr qint64 mostArtworkBytes = qint64{64} * 1024 * 1024;

std::optional<QByteArray> readArtwork(const QString& path)
{
    try {
        return readRegularFile(path, mostArtworkBytes);
    } catch (const FileError&) {
        return std::nullopt;
    }
}

void addArtwork(Tags::Metadata& metadata, const std::optional<QString>& path)
{
    const QString extension = QFileInfo(path.value_or(QString())).suffix().toLower();
    if (extension.isEmpty() || extension == u"webp")
        return;
    metadata.artwork = readArtwork(*path);
    metadata.artworkMime = extension == u"png" ? u"image/png"_s : u"image/jpeg"_s;
}

std::optional<QString> ifAny(const QString& text)
{
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

/// Where a move is cut short the recordings still stand under the old stem, and the next run goes on from there.
QStringList recordingsLast(QStringList files)
{
    const auto isNoRecording = [](const QString& file) { return Library::classify(file, {}) != Library::Asset::audio; };
    std::stable_partition(files.begin(), files.end(), isNoRecording);
    return files;
}

using Making = bool (*)(const std::filesystem::path&, std::error_code&);

QString refusalTo(Making make, const QString& path)
{
    try {
        std::error_code refusal;
        make(systemName(path).constData(), refusal);
        if (refusal)
            throw FileError(path, refusal.value());
    } catch (const FileError& error) {
        return error.sentence();
    }
    return {};
}

Tags::Metadata metadataFor(const TagOrder& order)
{
    Tags::Metadata metadata;
    metadata.title = QFileInfo(order.audio).completeBaseName();
    metadata.album = order.album;
    metadata.genre = ifAny(order.clip.tags);
    metadata.trackNumber = order.number;
    metadata.trackTotal = order.total;
    metadata.lyrics = ifAny(order.clip.lyrics);
    addArtwork(metadata, order.artwork);
    return metadata;
}

} // namespace

QStringList namesOf(const QList<SavedTrack>& tracks, const QString& pattern)
{
    QStringList names;
    names.reserve(tracks.size());
    for (int index = 0; index < static_cast<int>(tracks.size()); ++index)
        names.append(TrackNamer::name(TrackNamer::Source::of(tracks.at(index).clip), index, pattern));
    return names;
}

QStringList stemsFor(const QStringList& names)
{
    TrackNamer::UniqueNames unique;
    QStringList stems;
    stems.reserve(names.size());
    for (int index = 0; index < static_cast<int>(names.size()); ++index)
        stems.append(unique.take(safeName(names.at(index), u"Track %1"_s.arg(index + 1))));
    return stems;
}

Renamed renameFiles(const QString& folder, const QStringList& files, const QString& base, const QString& stem)
{
    Renamed result;
    for (const QString& file : recordingsLast(files)) {
        const QString target = stem + file.sliced(base.size());
        if (target == file)
            continue;
        try {
            moveWithoutReplacing(folder + u'/' + file, folder + u'/' + target);
            ++result.moved;
        } catch (const FileError& error) {
            result.problems.append(
                {.file = file, .target = target, .reason = error.code() == EEXIST ? QString() : error.reason()});
        }
    }
    return result;
}

QString writeTracklist(const QStringList& names, const QString& folder)
{
    QStringList lines;
    lines.reserve(names.size());
    for (int index = 0; index < static_cast<int>(names.size()); ++index)
        lines.append(u"%1. "_s.arg(index + 1, 2, 10, QChar(u'0')) + names.at(index));
    try {
        writeAtomically(folder + u"/Tracklist.txt"_s, lines.join(u'\n').toUtf8());
    } catch (const FileError& error) {
        return error.sentence();
    }
    return {};
}

QString tagTrack(const TagOrder& order)
{
    try {
        Tags::write(metadataFor(order), order.audio);
    } catch (const Tags::Failure& failure) {
        return failure.sentence();
    } catch (const FileError& error) {
        return error.sentence();
    }
    return {};
}

Mastered masterTrack(const MasterOrder& order)
{
    try {
        return {.result =
                    Master::master(order.audio, order.output, order.target, order.ceiling, order.as, order.watermark),
                .refusal = {}};
    } catch (const std::exception& error) {
        return {.result = {}, .refusal = Master::sentenceOf(error)};
    }
}

QString makeFolder(const QString& path)
{
    return refusalTo(std::filesystem::create_directories, path);
}

QString makeMasteredFolder(const QString& folder)
{
    return refusalTo(std::filesystem::create_directory, folder + u"/Mastered"_s);
}

QString makeVideosFolder(const QString& folder)
{
    return refusalTo(std::filesystem::create_directory, folder + u"/Videos"_s);
}

void removeLeftovers(const QString& folder)
{
    for (const QString& each : {folder, folder + u"/Mastered"_s, folder + u"/Videos"_s})
        removeStagingLeftovers(each);
}

} // namespace orvane::TrackWork
