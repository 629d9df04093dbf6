#pragma once

#include <QString>

#include <stdexcept>

namespace orvane {

/// A video file that could not be written.
class VideoError : public std::runtime_error
{
public:
    explicit VideoError(const QString& reason)
        : std::runtime_error(reason.toStdString())
    {
    }

    /// From an error number of the encoding library.
    static VideoError fromLibrary(int code);

    /// What the encoder or the system said.
    QString reason() const { return QString::fromUtf8(what()); }
};

/// Throws what an error number of the encoding library stands for: VideoError, or std::bad_alloc. Nothing for 0 and up.
void requireVideo(int code);

} // namespace orvane
