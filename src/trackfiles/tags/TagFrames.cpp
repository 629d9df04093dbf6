#include "trackfiles/tags/Tags.h"

#include <QtGlobal>

namespace orvane {

namespace {

constexpr char utf8Encoding = 0x03;
constexpr char frontCover = 0x03;
constexpr char terminator = 0x00;
constexpr qsizetype paddingBytes = 512;
constexpr qsizetype headerBytes = 10;
constexpr qsizetype leastTagBytes = headerBytes + 1;
constexpr qsizetype flagsAt = 5;
constexpr qsizetype sizeAt = 6;
constexpr unsigned char footerFlag = 0x10;

void appendSize(QByteArray& bytes, qsizetype size)
{
    for (const std::uint8_t byte : Tags::synchsafe(size))
        bytes.append(static_cast<char>(byte));
}

QByteArray frame(const char* id, const QByteArray& body)
{
    QByteArray bytes(id);
    appendSize(bytes, body.size());
    bytes.append(2, '\0');
    return bytes + body;
}

QByteArray textFrame(const char* id, const QString& value)
{
    const QByteArray text = value.toUtf8();
    return text.isEmpty() ? QByteArray() : frame(id, utf8Encoding + text + terminator);
}

QByteArray optionalTextFrame(const char* id, const std::optional<QString>& value)
{
    return value ? textFrame(id, *value) : QByteArray();
}

QByteArray trackFrame(const Tags::Metadata& metadata)
{
    if (!metadata.trackNumber)
        return {};
    QString position = QString::number(*metadata.trackNumber);
    if (metadata.trackTotal)
        position += u'/' + QString::number(*metadata.trackTotal);
    return textFrame("TRCK", position);
}

QByteArray lyricsFrame(const std::optional<QString>& lyrics)
{
    const QByteArray text = lyrics.value_or(QString()).toUtf8();
    if (text.isEmpty())
        return {};
    return frame("USLT", utf8Encoding + QByteArray("eng") + terminator + text + terminator);
}

QByteArray pictureFrame(const Tags::Metadata& metadata)
{
    if (!metadata.artwork || metadata.artwork->isEmpty())
        return {};
    const QByteArray description(1, terminator);
    return frame("APIC", utf8Encoding + metadata.artworkMime.toUtf8() + terminator + frontCover + description +
                             *metadata.artwork);
}

} // namespace

QByteArray Tags::build(const Metadata& metadata)
{
    const QByteArray frames = textFrame("TIT2", metadata.title) + textFrame("TPE1", metadata.artist) +
                              optionalTextFrame("TALB", metadata.album) + optionalTextFrame("TCON", metadata.genre) +
                              trackFrame(metadata) + lyricsFrame(metadata.lyrics) + pictureFrame(metadata);
    QByteArray tag("ID3\x04\x00\x00", sizeAt);
    tag.reserve(headerBytes + frames.size() + paddingBytes);
    appendSize(tag, frames.size() + paddingBytes);
    tag.append(frames);
    tag.append(paddingBytes, '\0');
    return tag;
}

qsizetype Tags::audioOffset(QByteArrayView data)
{
    return static_cast<qsizetype>(audioOffset(data, data.size()));
}

qint64 Tags::audioOffset(QByteArrayView head, qint64 fileSize)
{
    if (fileSize < leastTagBytes || head.size() < leastTagBytes || !head.startsWith("ID3"))
        return 0;
    const bool hasFooter = static_cast<unsigned char>(head[flagsAt]) & footerFlag;
    const qint64 frame = hasFooter ? 2 * headerBytes : headerBytes;
    return std::min(frame + readSynchsafe(head.sliced(sizeAt, 4)), fileSize);
}

std::array<std::uint8_t, 4> Tags::synchsafe(qint64 value)
{
    if (value < 0)
        qFatal("A size is never negative.");
    const auto part = [value](int shift) { return static_cast<std::uint8_t>((value >> shift) & 0x7F); };
    return {part(21), part(14), part(7), part(0)};
}

qint64 Tags::readSynchsafe(QByteArrayView bytes)
{
    quint64 value = 0;
    for (const char byte : bytes)
        value = (value << 7) | (static_cast<unsigned char>(byte) & 0x7F);
    return static_cast<qint64>(value);
}

} // namespace orvane
