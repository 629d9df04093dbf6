#pragma once

#include <QByteArray>
#include <QSize>
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
    /// How long it plays.
    double seconds = 0.0;
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

/// As ffprobe tells it.
struct VideoRead
{
    QString pictureCodec;
    QString soundCodec;
    QSize size;
    /// Counted by decoding.
    int frames = 0;
    double seconds = 0.0;

    bool operator==(const VideoRead&) const = default;
};

/// What is not there is empty or 0. Blocks.
VideoRead videoOf(const QString& path);

/// Writes the picture that ffmpeg decodes at that moment; false where it cannot. Blocks.
bool savePicture(const QString& video, double seconds, const QString& picture);

} // namespace orvane::demo
