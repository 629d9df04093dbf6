#pragma once

#include "platform/filesystem/Descriptor.h"
#include "platform/filesystem/FileError.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <cstddef>
#include <vector>

namespace orvane {

/// A regular file that is read in blocks. Pipes, devices and folders are refused (EINVAL, EISDIR) without being opened,
/// so that none is ever waited for.
class RegularFile
{
public:
    /// Throws FileError.
    explicit RegularFile(const QString& path);

    /// Bytes that the file had when it was opened.
    qint64 size() const { return size_; }

    /// Up to `most` bytes from `offset`, fewer only at the file's end; good until the next call. Throws FileError.
    QByteArrayView read(qint64 offset, std::size_t most);

private:
    QString path_;
    Descriptor file_;
    qint64 size_ = 0;
    std::vector<char> block_;
};

/// The bytes of the regular file at `path`; FileError with EFBIG where there are more than `most`.
QByteArray readRegularFile(const QString& path, qint64 most);

} // namespace orvane
