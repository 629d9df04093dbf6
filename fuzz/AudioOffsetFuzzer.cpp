#include "fuzz/Law.h"
#include "platform/filesystem/FileError.h"
#include "trackfiles/tags/Tags.h"

#include <QFile>
#include <QTemporaryDir>

using orvane::fuzz::mustHold;
namespace Tags = orvane::Tags;

namespace {

QString temporaryFile()
{
    static const QTemporaryDir folder;
    return folder.filePath(QStringLiteral("song.mp3"));
}

void put(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    mustHold(file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size());
}

QByteArray contents(const QString& path)
{
    QFile file(path);
    mustHold(file.open(QFile::ReadOnly));
    return file.readAll();
}

bool beginsAsAudio(const QByteArray& bytes)
{
    return bytes.size() >= 2 && bytes[0] == '\xFF' && (bytes[1] & 0xE0) == 0xE0;
}

void checkOffset(const QByteArray& bytes)
{
    const qsizetype offset = Tags::audioOffset(bytes);
    const bool hasTag = bytes.size() > 10 && bytes.startsWith("ID3");
    mustHold(hasTag ? offset >= 10 && offset <= bytes.size() : offset == 0);
    mustHold(Tags::audioOffset(QByteArrayView(bytes).first(std::min<qsizetype>(bytes.size(), 11)), bytes.size()) ==
             offset);
}

} // namespace

/// The audio begins within the file; writing replaces what lies before it and nothing else, and a second time changes
/// nothing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes = orvane::fuzz::bytes(data, size);
    checkOffset(bytes);
    const QString path = temporaryFile();
    put(path, bytes);
    const qsizetype offset = Tags::audioOffset(bytes);
    const Tags::Metadata metadata{.title = QString::fromUtf8(bytes), .lyrics = QString::fromLatin1(bytes)};
    try {
        Tags::write(metadata, path);
        const QByteArray tag = Tags::build(metadata);
        mustHold(Tags::audioOffset(tag) == tag.size());
        mustHold(contents(path) == tag + bytes.sliced(offset));
        Tags::write(metadata, path);
        mustHold(contents(path) == tag + bytes.sliced(offset));
    } catch (const Tags::Failure&) {
        mustHold(offset == 0 && !beginsAsAudio(bytes));
        mustHold(contents(path) == bytes);
    }
    return 0;
}
