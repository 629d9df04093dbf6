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

/// What ffprobe finds in a file.
struct ProbedFile
{
    /// By the names that it gives them.
    QJsonObject texts;
    /// MD5 of the picture in hexadecimal; empty without one.
    QByteArray pictureHash;
};

ProbedFile readByFfprobe(const QString& path);

/// A hash of the audio of the file at `path`, as ffmpeg copies it out.
QByteArray audioHash(const QString& path);

} // namespace orvane::test
