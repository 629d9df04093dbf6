#include "laboratory/Arguments.h"
#include "laboratory/Verb.h"
#include "platform/filesystem/ReadFile.h"
#include "trackfiles/tags/Tags.h"

#include <QFileInfo>
#include <QJsonObject>

namespace orvane::lab {

using namespace Qt::Literals::StringLiterals;

namespace {

/// What the four bytes of a frame's size can say.
constexpr qint64 mostBytes = (1 << 28) - 1;

std::optional<QByteArray> contents(const std::optional<QString>& path)
{
    return path ? std::optional(readRegularFile(absolute(*path), mostBytes)) : std::nullopt;
}

std::optional<QString> textIn(const std::optional<QString>& path)
{
    const auto bytes = contents(path);
    return bytes ? std::optional(QString::fromUtf8(*bytes)) : std::nullopt;
}

QString pictureMime(const QString& path)
{
    return QFileInfo(path).suffix().toLower() == u"png" ? u"image/png"_s : u"image/jpeg"_s;
}

Tags::Metadata metadataFrom(const Arguments& given)
{
    Tags::Metadata metadata;
    metadata.title = given.requiredText(u"title"_s);
    metadata.artist = given.text(u"artist"_s).value_or(metadata.artist);
    metadata.album = given.text(u"album"_s);
    metadata.genre = given.text(u"genre"_s);
    metadata.trackNumber = given.integer(u"track"_s);
    metadata.trackTotal = given.integer(u"total"_s);
    metadata.lyrics = textIn(given.text(u"lyrics-file"_s));
    metadata.artwork = contents(given.text(u"artwork"_s));
    metadata.artworkMime = pictureMime(given.text(u"artwork"_s).value_or(QString()));
    return metadata;
}

} // namespace

QJsonValue tag(const QStringList& arguments)
{
    const Arguments given(arguments, {u"title"_s, u"artist"_s, u"album"_s, u"genre"_s, u"track"_s, u"total"_s,
                                      u"lyrics-file"_s, u"artwork"_s});
    const QString path = absolute(given.alone(1, 1).first());
    const Tags::Metadata metadata = metadataFrom(given);
    Tags::write(metadata, path);
    return QJsonObject{
        {u"path"_s, path}, {u"tagBytes"_s, qint64(Tags::build(metadata).size())}, {u"bytes"_s, QFileInfo(path).size()}};
}

} // namespace orvane::lab
