#pragma once

#include "video/VideoEngine.h"

#include <QByteArray>
#include <QImage>
#include <QStringList>
#include <QUrl>

#include <vector>

namespace orvane::test {

/// A WAV file of 32-bit floats; `samples` are interleaved.
QByteArray floatWav(const std::vector<float>& samples, int rate, int channels);

/// What ffprobe tells of a stream ("v:0", "a:0"): the values of these entries, in ffprobe's own order.
QStringList streamEntries(const QString& path, const QString& stream, const QString& entries);

/// Seconds that a stream lasts.
double streamSeconds(const QString& path, const QString& stream);

/// The times in seconds of a file's key frames.
std::vector<double> keyFrameTimes(const QString& path);

/// Whether the whole file decodes without a complaint.
bool decodesWhole(const QString& path);

/// Whether a player that goes to `seconds` gets pictures and sound from there on without a complaint.
bool decodesFrom(const QString& path, double seconds);

/// The names of the boxes that an MP4 file consists of.
QStringList boxes(const QByteArray& file);

/// The mean brightness of a part of each picture, from 0 to 255.
std::vector<double> brightness(const QString& path, const QRect& part);

} // namespace orvane::test
