#pragma once

#include <QString>

#include <memory>
#include <vector>

namespace orvane {

/// Samples as a file's decoder gives them: for each channel one plane of 32-bit floats, all of one length, nominally
/// from -1 to 1, in the file's order of channels.
using SoundPlanes = std::vector<std::vector<float>>;

/// Decodes a sound file, block by block, at its own sample rate and channel count: MP3, WAV (also RF64 and W64), FLAC,
/// AAC and ALAC in MPEG-4, ADTS, Ogg Vorbis, Opus, AIFF and CAF. What the encoder added at either end is left out where
/// the file says so. Samples that are no numbers or infinite are 0. What the file is goes by its content, not its name.
/// For use by one thread at a time.
class AudioReader
{
public:
    /// Opens the file at `path` and decodes its first block. Throws FileError for what the system refuses, and
    /// SoundError: NoAudio for a file without a sample, Unsupported where no stream of it is sound of at most
    /// 8 channels and 192 kHz, Platform with the library's words for what is no sound file or is damaged.
    explicit AudioReader(const QString& path);
    ~AudioReader();
    AudioReader(AudioReader&&) noexcept;
    AudioReader& operator=(AudioReader&&) noexcept;

    /// In Hz.
    int sampleRate() const;
    int channelCount() const;

    /// Frames that the file says it has, and no more than its size makes likely; 0 where it says nothing. What `read`
    /// gives may be more or less.
    qint64 expectedFrames() const;

    /// Replaces `block` with the file's next samples; false at its end. Throws SoundError: Platform for damage that
    /// cannot be passed over, Unsupported where the sample rate or the channel count changes midway, NoAudio when the
    /// sound goes on for more than 24 hours.
    bool read(SoundPlanes& block);

private:
    class Decoder;
    std::unique_ptr<Decoder> decoder_;
};

} // namespace orvane
