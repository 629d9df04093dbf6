#pragma once

#include <QString>

#include <memory>
#include <span>
#include <vector>

namespace orvane {

/// What a sound file is written as; its container follows from it.
enum class AudioCodec
{
    /// RIFF WAVE, 24-bit; RF64 where the size asks for it.
    Wav24,
    /// Native FLAC, 24-bit.
    Flac24,
    /// Apple Lossless in MPEG-4, 24-bit.
    Alac24,
    /// AAC in MPEG-4 at 256 kbit/s.
    Aac256,
};

/// Writes a sound file piece by piece. It is whole under its final name once `finish` returned, and absent, or what it
/// was before, until then: the sound goes to a temporary file in the same folder, which is removed on every failure.
/// Samples are held at -1 to 1 in single precision and rounded, without dither. For use by one thread at a time.
class AudioWriter
{
public:
    struct Settings
    {
        AudioCodec codec = AudioCodec::Wav24;
        /// In Hz.
        int sampleRate = 44100;
        int channelCount = 2;
        /// Frames that will be written, as far as known; settles between RIFF and RF64 beforehand.
        qint64 expectedFrames = 0;
    };

    /// Both are absolute paths in one folder. Throws FileError for what the system refuses and SoundError (Platform,
    /// named after the final file) for what the encoder does.
    AudioWriter(const QString& finalPath, const QString& temporaryPath, const Settings& settings);
    ~AudioWriter();
    AudioWriter(AudioWriter&&) noexcept;
    AudioWriter& operator=(AudioWriter&&) noexcept;

    /// Appends `count` frames of `channels` from the frame `start` on. There are as many channels as were set, each
    /// that long. Throws as the constructor does.
    void write(std::span<const std::vector<double>> channels, std::size_t start, std::size_t count);

    /// Ends the file and moves it to its final name. Throws as the constructor does. Called once, last.
    void finish();

private:
    class Encoder;
    std::unique_ptr<Encoder> encoder_;
};

} // namespace orvane
