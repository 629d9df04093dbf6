#include "platform/filesystem/AtomicFile.h"
#include "platform/filesystem/ReadFile.h"
#include "trackfiles/tags/Tags.h"

#include <QFileInfo>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Enough for a tag's header and for the beginning of MPEG audio.
constexpr std::size_t headBytes = 16;
constexpr std::size_t blockBytes = std::size_t{1024} * 1024;

bool looksLikeMpegAudio(QByteArrayView head)
{
    return head.size() >= 2 && static_cast<unsigned char>(head[0]) == 0xFF &&
           static_cast<unsigned char>(head[1]) >= 0xE0;
}

void copyAudio(RegularFile& source, qint64 offset, AtomicFile& target)
{
    while (true) {
        const QByteArrayView block = source.read(offset, blockBytes);
        if (block.isEmpty())
            return;
        target.write(block);
        offset += block.size();
    }
}

QString taggingSibling(const QString& path)
{
    const qsizetype name = path.lastIndexOf(u'/') + 1;
    return path.first(name) + u'.' + path.sliced(name) + u".tagging"_s;
}

} // namespace

Tags::Failure::Failure(const QString& sentence)
    : std::runtime_error(sentence.toStdString())
    , sentence_(sentence)
{
}

Tags::Failure Tags::Failure::notAnMP3(const QString& fileName)
{
    return Failure(fileName + u" does not look like an MP3, so it was left alone."_s);
}

void Tags::write(const Metadata& metadata, const QString& path)
{
    RegularFile source(path);
    const QByteArray head = source.read(0, headBytes).toByteArray();
    const qint64 offset = audioOffset(head, source.size());
    if (offset == 0 && !looksLikeMpegAudio(head))
        throw Failure::notAnMP3(QFileInfo(path).fileName());

    AtomicFile tagged(path, taggingSibling(path));
    tagged.write(build(metadata));
    copyAudio(source, offset, tagged);
    tagged.commit();
}

} // namespace orvane
