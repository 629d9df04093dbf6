#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <array>
#include <cstdint>
#include <optional>
#include <stdexcept>

namespace orvane {

/// Writes ID3v2.4 tags at the head of MP3 files (id3.org, "ID3 tag version 2.4.0"). The tag is always a fresh one: what
/// tag the file had is dropped whole, and every byte of the audio behind it stays. Knows nothing of other kinds of tag.
namespace Tags {

/// What a tag says. An empty or absent field leaves no frame.
struct Metadata
{
    QString title;
    QString artist = QStringLiteral("Suno AI");
    std::optional<QString> album;
    /// Plain text, never a number of the old list.
    std::optional<QString> genre;
    std::optional<int> trackNumber;
    /// Says nothing without a number.
    std::optional<int> trackTotal;
    std::optional<QString> lyrics;
    /// The picture file's bytes, unchanged.
    std::optional<QByteArray> artwork;
    QString artworkMime = QStringLiteral("image/jpeg");

    bool operator==(const Metadata&) const = default;
};

/// A file that was left alone because it is no MP3.
class Failure : public std::runtime_error
{
public:
    /// `fileName` is the file's last path component.
    static Failure notAnMP3(const QString& fileName);

    /// The words for the user.
    const QString& sentence() const { return sentence_; }

private:
    explicit Failure(const QString& sentence);

    QString sentence_;
};

/// The complete tag: header, frames, 512 bytes of padding.
QByteArray build(const Metadata& metadata);

/// Where the audio begins in the bytes of a whole file: behind the tag, 0 where there is none, never beyond the end.
qsizetype audioOffset(QByteArrayView data);

/// As above for a file of `fileSize` bytes of which only the first are at hand; 11 of them suffice.
qint64 audioOffset(QByteArrayView head, qint64 fileSize);

/// The four bytes of a 28-bit size, seven bits in each, the highest first. Higher bits are dropped; never negative.
std::array<std::uint8_t, 4> synchsafe(qint64 value);

/// The inverse, over any number of bytes; 0 for none.
qint64 readSynchsafe(QByteArrayView bytes);

/// Replaces the tag of the file at `path`. The new file is built beside it as ".NAME.tagging" and renamed over it.
/// Throws Failure where the file has neither a tag nor the beginning of MPEG audio, and FileError; the file then is
/// as it was.
void write(const Metadata& metadata, const QString& path);

} // namespace Tags
} // namespace orvane
