#pragma once

#include <QString>

#include <stdexcept>

namespace orvane {

/// A sound file that could not be read or written.
class SoundError : public std::runtime_error
{
public:
    enum class Kind
    {
        /// The file holds no sound, or more than can be held.
        NoAudio,
        /// The file holds nothing that this program takes as sound.
        Unsupported,
        /// The encoder would not start with these settings.
        BadSettings,
        /// What the library or the system said.
        Platform,
    };

    SoundError(Kind kind, const QString& path, const QString& words);

    /// From an error number of the decoding library.
    static SoundError fromLibrary(const QString& path, int code);

    Kind kind() const { return kind_; }

    const QString& path() const { return path_; }

    /// One sentence for the user: the file's name and what went wrong.
    QString sentence() const;

private:
    Kind kind_;
    QString path_;
};

} // namespace orvane
