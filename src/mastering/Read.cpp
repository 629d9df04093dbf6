#include "mastering/Read.h"

#include "mastering/Failure.h"
#include "platform/sound/AudioReader.h"
#include "platform/sound/SoundError.h"

#include <QFileInfo>

#include <new>

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

/// Room is made as samples come, whatever the file's header promises.
Sound readWhole(const QString& path)
{
    AudioReader reader(path);
    Sound sound{.channels = Channels(std::size_t(reader.channelCount())), .sampleRate = double(reader.sampleRate())};
    SoundPlanes block;
    while (reader.read(block)) {
        for (std::size_t channel = 0; channel < block.size(); ++channel)
            sound.channels[channel].insert(sound.channels[channel].end(), block[channel].begin(), block[channel].end());
    }
    return sound;
}

} // namespace

Sound read(const QString& path)
{
    try {
        return readWhole(path);
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

} // namespace orvane::Master
