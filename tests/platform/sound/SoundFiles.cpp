#include "tests/platform/sound/SoundFiles.h"

#include "platform/filesystem/FileError.h"
#include "platform/sound/SoundError.h"
#include "tests/platform/sound/Program.h"

#include <QDataStream>
#include <QIODevice>

#include <cmath>
#include <numbers>

namespace orvane::test {

using namespace Qt::Literals::StringLiterals;

QByteArray wav(const QByteArray& samples, int sampleRate, int channels, int bits, WavKind kind,
               std::int64_t promisedBytes)
{
    const auto size = quint32(promisedBytes < 0 ? samples.size() : promisedBytes);
    const int frameSize = channels * bits / 8;
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.writeRawData("RIFF", 4);
    stream << quint32(36 + size);
    stream.writeRawData("WAVEfmt ", 8);
    stream << quint32(16) << quint16(kind == WavKind::Float ? 3 : 1) << quint16(channels) << quint32(sampleRate)
           << quint32(sampleRate * frameSize) << quint16(frameSize) << quint16(bits);
    stream.writeRawData("data", 4);
    stream << size;
    return bytes + samples;
}

QByteArray floatBytes(const std::vector<float>& samples)
{
    return {reinterpret_cast<const char*>(samples.data()), qsizetype(samples.size() * sizeof(float))};
}

std::vector<float> tones(std::size_t frames, int channels, int sampleRate)
{
    std::vector<float> samples;
    for (std::size_t frame = 0; frame < frames; ++frame) {
        for (int channel = 0; channel < channels; ++channel) {
            const double turns = double(frame) / sampleRate * (220.0 + 110.0 * channel);
            samples.push_back(float(0.5 * std::sin(2.0 * std::numbers::pi * turns)));
        }
    }
    return samples;
}

Decoded decodeWhole(const QString& path)
{
    AudioReader reader(path);
    Decoded decoded{.planes = SoundPlanes(std::size_t(reader.channelCount())), .sampleRate = reader.sampleRate()};
    SoundPlanes block;
    while (reader.read(block)) {
        for (std::size_t channel = 0; channel < block.size(); ++channel)
            decoded.planes[channel].insert(decoded.planes[channel].end(), block[channel].begin(), block[channel].end());
    }
    return decoded;
}

QString failureOf(const QString& path)
{
    try {
        decodeWhole(path);
    } catch (const FileError& error) {
        return error.sentence();
    } catch (const SoundError& error) {
        return error.sentence();
    }
    return {};
}

bool convert(const QString& source, const QStringList& options, const QString& target)
{
    return run(u"ffmpeg"_s, QStringList{u"-v"_s, u"error"_s, u"-y"_s, u"-i"_s, source} + options + QStringList{target})
               .exitCode == 0;
}

} // namespace orvane::test
