#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// What programs that are not ours find in a file.
namespace orvane::demo {

/// As libebur128 measures it.
struct Loudness
{
    /// In LUFS.
    double integrated = 0.0;
    /// In dBTP.
    double truePeak = 0.0;
};

/// Absent for what is no sound file. Throws nothing.
std::optional<Loudness> loudnessOf(const QString& path);

/// As TagLib reads an ID3v2 tag; what is not there is empty or 0.
struct TagsRead
{
    QString title;
    QString artist;
    QString album;
    QString genre;
    QString track;
    QString lyrics;
    QString coverType;
    QByteArray cover;

    bool operator==(const TagsRead&) const = default;
};

TagsRead tagsOf(const QString& path);

} // namespace orvane::demo
