#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <array>
#include <optional>

namespace orvane {

/// What a file is to a track, and which track it belongs to.
namespace Library {

enum class Asset
{
    audio,
    artwork,
    lyrics,
    timed,
    mastered,
    video
};

inline constexpr std::array allAssets{Asset::audio, Asset::artwork,  Asset::lyrics,
                                      Asset::timed, Asset::mastered, Asset::video};

QString rawValue(Asset asset);
/// Name for people.
QString label(Asset asset);
/// One-character mark.
QString symbol(Asset asset);
/// File extensions in lower case.
QStringList extensions(Asset asset);

/// What the file of that name is, in a folder of the name `folderName`; absent where it is nothing to a track.
std::optional<Asset> classify(QStringView fileName, QStringView folderName);

/// The stem that the file of that name belongs to: without extension, " lyrics" and a platform in brackets.
QString trackKey(const QString& fileName);

/// As above, as the part of `fileName` that it is.
QStringView trackKeyIn(QStringView fileName);

} // namespace Library

namespace TrackNamer {

/// `name` without a leading number of one to four digits, its separator and the blank behind it.
QString stripIndexPrefix(const QString& name);

} // namespace TrackNamer

/// Which files of an earlier run are on disk: the whole memory of a resumed run.
namespace ExistingFiles {

/// From lower-cased title to base name, for the asset files that lie directly in `folder` and are not hidden. Where two
/// bases share a title the lexically smaller one stays. A folder that cannot be read counts as empty.
QHash<QString, QString> byTitle(const QString& folder);

/// The base name of the track with the safe title `title` at the zero-based position `index`: the one on disk, else
/// "NNN - title".
QString base(const QString& title, int index, const QHash<QString, QString>& existing);

} // namespace ExistingFiles

} // namespace orvane
