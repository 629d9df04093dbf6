#pragma once

#include <QString>

#include <stdexcept>

namespace orvane::Video {

/// A video that was not made: a code to branch on and a sentence to show, which is English in every language.
class Failure : public std::runtime_error
{
public:
    enum Code
    {
        /// A sound file that cannot be read, or is empty.
        Unreadable,
        NoAudioTrack,
        /// What the system or the encoder refused.
        WriterFailed,
        /// The user stopped.
        Cancelled,
    };

    /// `fileName` is the file's name with its extension, without its folder.
    static Failure unreadable(const QString& fileName);
    static Failure noAudioTrack(const QString& fileName);
    static Failure writerFailed(const QString& detail);
    static Failure cancelled();

    Code code() const { return code_; }

    QString errorDescription() const { return QString::fromUtf8(what()); }

private:
    Failure(Code code, const QString& sentence);

    Code code_;
};

} // namespace orvane::Video
