#pragma once

#include <QString>

#include <stdexcept>

namespace orvane {

/// A file operation that the operating system refused.
class FileError : public std::runtime_error
{
public:
    /// `path` is the file's path, `code` the system's error number (errno).
    FileError(const QString& path, int code);

    const QString& path() const { return path_; }

    int code() const { return code_; }

    /// The system's words for the error.
    QString reason() const;

    /// One sentence for the user: the file's name and the system's words for the error.
    QString sentence() const;

private:
    QString path_;
    int code_;
};

} // namespace orvane
