#include "mastering/Read.h"

#include "mastering/Failure.h"
#include "mastering/arithmetic/InParallel.h"
#include "mastering/arithmetic/Loudness.h"
#include "mastering/arithmetic/Room.h"
#include "platform/sound/AudioReader.h"
#include "platform/sound/SoundError.h"

#include <QFileInfo>

#include <algorithm>
#include <cstddef>
#include <new>
#include <utility>

namespace orvane::Master {

using namespace Qt::Literals::StringLiterals;

namespace {

Failure couldNotRead(const QString& path)
{
    return {Failure::CouldNotRead, u"Could not read %1."_s.arg(QFileInfo(path).fileName())};
}

Failure notAFormat(const QString& path)
{
    return {Failure::NotAFormat, u"%1 is not in a format this can master."_s.arg(QFileInfo(path).fileName())};
}

/// Decoded at once, while what was decoded before is measured.
constexpr std::size_t batchLength = 65536;

/// Room for as much as the file promises, if the system has as much: a promise is a hint and no more. Of a stream
/// whose length is estimated a little more may come, for which all that is there by then would have to move.
void makeRoomFor(qint64 frames, Channels& channels)
{
    const auto room = std::size_t(frames + frames / 32);
    try {
        for (auto& channel : channels)
            makeRoom(channel, room);
    } catch (const std::bad_alloc&) {
    }
}

void append(std::vector<double>& channel, const std::vector<float>& samples)
{
    channel.insert(channel.end(), samples.begin(), samples.end());
}

Sound emptySound(const AudioReader& reader)
{
    Sound sound{.channels = Channels(std::size_t(reader.channelCount())), .sampleRate = double(reader.sampleRate())};
    makeRoomFor(reader.expectedFrames(), sound.channels);
    return sound;
}

/// Appends the only plane, or the mean of the first two.
void appendMean(std::vector<double>& channel, const SoundPlanes& block)
{
    if (block.size() == 1)
        return append(channel, block[0]);
    const std::size_t start = channel.size();
    channel.resize(start + block[0].size());
    std::transform(block[0].begin(), block[0].end(), block[1].begin(), channel.begin() + std::ptrdiff_t(start),
                   [](float left, float right) { return (double(left) + double(right)) * 0.5; });
}

Sound readWholeAsMono(const QString& path)
{
    AudioReader reader(path);
    Sound sound{.channels = Channels(1), .sampleRate = double(reader.sampleRate())};
    makeRoomFor(reader.expectedFrames(), sound.channels);
    SoundPlanes block;
    while (reader.read(block))
        appendMean(sound.channels.front(), block);
    return sound;
}

Sound readWhole(const QString& path)
{
    AudioReader reader(path);
    Sound sound = emptySound(reader);
    SoundPlanes block;
    while (reader.read(block)) {
        for (std::size_t channel = 0; channel < block.size(); ++channel)
            append(sound.channels[channel], block[channel]);
    }
    return sound;
}

/// The file's next frames, at least `batchLength` of them; less, or none, at its end.
void readBatch(AudioReader& reader, SoundPlanes& batch, SoundPlanes& block)
{
    for (auto& plane : batch)
        plane.clear();
    while (batch.front().size() < batchLength && reader.read(block)) {
        for (std::size_t channel = 0; channel < batch.size(); ++channel)
            batch[channel].insert(batch[channel].end(), block[channel].begin(), block[channel].end());
    }
}

/// Decodes the next batch beside the measuring of the one before.
MeasuredSound readAndMeasureWhole(const QString& path)
{
    AudioReader reader(path);
    Sound sound = emptySound(reader);
    std::vector<ChannelMeter> meters = metersFor(sound.channels.size(), sound.sampleRate);
    SoundPlanes block;
    SoundPlanes batch(sound.channels.size());
    SoundPlanes coming = batch;
    readBatch(reader, coming, block);
    while (!coming.front().empty()) {
        std::swap(batch, coming);
        inParallel(1 + meters.size(), processorCount(), [&](std::size_t job) {
            if (job == 0)
                return readBatch(reader, coming, block);
            append(sound.channels[job - 1], batch[job - 1]);
            meters[job - 1].advance(sound.channels[job - 1]);
        });
    }
    const Reading reading = finish(meters, sound.channels);
    return {.sound = std::move(sound), .reading = reading};
}

/// Reads by `readFile` and tells its failures in the words of mastering.
template <typename ReadFile>
auto readOrTell(const QString& path, ReadFile readFile)
{
    try {
        return readFile(path);
    } catch (const SoundError& error) {
        if (error.kind() == SoundError::Kind::NoAudio)
            throw couldNotRead(path);
        if (error.kind() == SoundError::Kind::Unsupported)
            throw notAFormat(path);
        throw;
    } catch (const std::bad_alloc&) {
        throw couldNotRead(path);
    }
}

} // namespace

Sound read(const QString& path)
{
    return readOrTell(path, readWhole);
}

Sound readAsMono(const QString& path)
{
    return readOrTell(path, readWholeAsMono);
}

MeasuredSound readAndMeasure(const QString& path)
{
    return readOrTell(path, readAndMeasureWhole);
}

} // namespace orvane::Master
