#include "fuzz/Law.h"
#include "platform/filesystem/Descriptor.h"
#include "platform/filesystem/FileError.h"
#include "platform/sound/AudioReader.h"
#include "platform/sound/SoundError.h"

#include <cmath>
#include <cstdint>
#include <sys/mman.h>
#include <unistd.h>

using namespace orvane;
using fuzz::mustHold;
using namespace Qt::Literals::StringLiterals;

namespace {

/// A file in memory and the name that it can be opened by.
struct MemoryFile
{
    Descriptor descriptor{::memfd_create("sound", MFD_CLOEXEC)};

    MemoryFile(const std::uint8_t* data, std::size_t size)
    {
        mustHold(descriptor.isOpen() && ::write(descriptor.number(), data, size) == ssize_t(size));
    }

    QString path() const { return u"/proc/self/fd/%1"_s.arg(descriptor.number()); }
};

void checkBlock(const SoundPlanes& block, const AudioReader& reader)
{
    mustHold(block.size() == std::size_t(reader.channelCount()));
    for (const auto& plane : block) {
        mustHold(plane.size() == block.front().size());
        for (const float sample : plane)
            mustHold(std::isfinite(sample));
    }
}

void decode(const QString& path)
{
    constexpr std::size_t enough = 1'000'000;
    AudioReader reader(path);
    mustHold(reader.channelCount() <= 8 && reader.sampleRate() <= 192000);
    SoundPlanes block;
    for (std::size_t frames = 0; frames < enough && reader.read(block); frames += block.front().size())
        checkBlock(block, reader);
}

} // namespace

/// Any bytes are either a sound of numbers within the limits or refused as what they are.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const MemoryFile file(data, size);
    try {
        decode(file.path());
    } catch (const FileError&) {
    } catch (const SoundError&) {
    }
    return 0;
}
