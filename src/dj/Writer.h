#pragma once

#include "mastering/Format.h"
#include "mastering/arithmetic/Channels.h"

#include <QString>

#include <cstddef>
#include <exception>
#include <memory>
#include <variant>

namespace orvane {
class AtomicFile;
class AudioWriter;
class Mp3Encoder;
} // namespace orvane

namespace orvane::DJ {

/// The file that a mix streams into. It is staged beside its final name and appears there when it is finished, if all
/// of it could be written: what cannot be written stops no render, and is told by `requireWhole`.
class Writer
{
public:
    struct Settings
    {
        /// In Hz; the file has two channels.
        double sampleRate = 44100.0;
        Master::Output output;
        /// Frames that will be written, as far as known.
        qint64 expectedFrames = 0;
    };

    /// `path` is absolute; a folder of that name is refused. Throws Failure (Empty) where there is no way to write an
    /// MP3, and FileError or SoundError for every other format.
    Writer(const QString& path, const Settings& settings);
    /// Finishes.
    ~Writer();
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    /// Appends the frames of `channels` from `first` up to `end`, in single precision and held at -1 to 1. One channel
    /// serves as both. Nothing happens without a channel or a frame, and none after the end. Never throws.
    void write(const Channels& channels, std::size_t first, std::size_t end);
    void write(const Channels& channels);

    /// Ends the file, once, and moves it to its final name. Never throws.
    void finish();

    /// Throws what kept the finished file from its final name: FileError, SoundError or Master::Failure.
    void requireWhole() const;

    /// Ends writing and leaves nothing.
    void abandon();

private:
    struct Mp3;
    using Stream = std::variant<std::monostate, std::unique_ptr<AudioWriter>, std::unique_ptr<Mp3>>;

    static Stream open(const QString& path, const Settings& settings);

    /// Does `work`, after whose failure nothing more is written.
    template <typename Work>
    void attempt(Work work);
    const Channels& piece(const Channels& channels, std::size_t first, std::size_t count);
    void writePiece(const Channels& piece);

    Stream stream_;
    Channels piece_;
    std::exception_ptr failure_;
    bool closed_ = false;
};

} // namespace orvane::DJ
