#pragma once

#include "trackfiles/tags/Tags.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

/// MP3s made by an encoder, and what programs that are not ours read in them.

namespace orvane::test {

enum class LameFrame
{
    With,
    Without
};

/// A second of a tone, with or without the frame that the encoder describes the file in.
QByteArray toneMp3(LameFrame frame = LameFrame::With);

/// What TagLib reads in the tag of the file at `path`. Fails the test where fixed fields are not what they must be.
Tags::Metadata readByTagLib(const QString& path);

/// The texts of the file at `path` by the names that ffprobe gives them.
QJsonObject textsReadByFfprobe(const QString& path);

/// MD5 in hexadecimal of the picture that ffprobe finds in the file at `path`; empty without a picture.
QByteArray pictureHashByFfprobe(const QString& path);

/// A hash of the audio of the file at `path`, as ffmpeg copies it out.
QByteArray audioHash(const QString& path);

} // namespace orvane::test
