#pragma once

#include "platform/sound/AudioReader.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <vector>

namespace orvane::test {

/// What a WAV file's samples are made of.
enum class WavKind
{
    Integer,
    Float,
};

/// A WAV file, byte for byte: its header promises `promisedBytes` of samples, or as many as there are for -1.
QByteArray wav(const QByteArray& samples, int sampleRate, int channels, int bits, WavKind kind,
               std::int64_t promisedBytes = -1);

/// Interleaved 32-bit floats as bytes.
QByteArray floatBytes(const std::vector<float>& samples);

/// A tone of `frames` frames, each channel at a pitch of its own, interleaved.
std::vector<float> tones(std::size_t frames, int channels, int sampleRate);

/// The whole file, plane by plane.
struct Decoded
{
    SoundPlanes planes;
    int sampleRate = 0;
};

Decoded decodeWhole(const QString& path);

/// What decoding the file ends in: "" when it went well, else the sentence for the user. Other exceptions pass.
QString failureOf(const QString& path);

/// Makes `target` from the WAV file `source` with the ffmpeg program; false where that fails.
bool convert(const QString& source, const QStringList& options, const QString& target);

} // namespace orvane::test
