#include "mastering/Write.h"

#include "main/App/L10n.h"
#include "mastering/Codec.h"
#include "mastering/Failure.h"
#include "platform/filesystem/AtomicFile.h"
#include "platform/sound/AudioWriter.h"
#include "platform/sound/Mp3Encoder.h"

namespace orvane::Master {

using namespace Qt::Literals::StringLiterals;

namespace {

AudioWriter::Settings settingsFor(const Channels& channels, double sampleRate, Format format)
{
    if (!(sampleRate >= 1.0 && sampleRate <= 2147483647.0))
        throw Failure(Failure::CouldNotPrepare, u"Could not prepare the mastered audio."_s);
    return {.codec = codecOf(format),
            .sampleRate = int(sampleRate),
            .channelCount = int(channels.size()),
            .expectedFrames = qint64(channels.front().size())};
}

Failure failureOf(Mp3Failure failure)
{
    switch (failure) {
    case Mp3Failure::NoEncoder:
        return {Failure::Mp3NoEncoder, L10n::t(L10n::Key::mp3NoEncoder)};
    case Mp3Failure::BadSettings:
        return {Failure::Mp3BadSettings, L10n::t(L10n::Key::mp3BadSettings)};
    case Mp3Failure::Failed:
        break;
    }
    return {Failure::Mp3Failed, L10n::t(L10n::Key::mp3Failed)};
}

QByteArray encodeMP3(const Channels& channels, double sampleRate, MP3Rate rate)
{
    const std::size_t frames = channels.front().size();
    QByteArray stream;
    stream.reserve(qsizetype(frames / 4));
    try {
        Mp3Encoder encoder(sampleRate, channels.size(), rawValue(rate));
        encoder.encode(channels, 0, frames, stream);
        encoder.flush(stream);
    } catch (Mp3Failure failure) {
        throw failureOf(failure);
    }
    return stream;
}

} // namespace

void write(const Channels& channels, double sampleRate, const Output& output, const QString& path)
{
    if (isEmpty(channels))
        return;
    if (output.format == Format::mp3)
        return writeMP3(channels, sampleRate, output.mp3Rate, path);
    const AudioWriter::Settings settings = settingsFor(channels, sampleRate, output.format);
    AudioWriter writer(path, temporarySibling(path), settings);
    writer.write(channels, 0, channels.front().size());
    writer.finish();
}

void writeMP3(const Channels& channels, double sampleRate, MP3Rate rate, const QString& path)
{
    if (isEmpty(channels))
        throw Failure(Failure::Mp3NoAudio, L10n::t(L10n::Key::mp3NoAudio));
    writeAtomically(path, encodeMP3(channels, sampleRate, rate));
}

} // namespace orvane::Master
