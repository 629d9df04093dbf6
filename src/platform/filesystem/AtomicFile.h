#pragma once

#include "platform/filesystem/FileError.h"

#include <QByteArrayView>
#include <QString>

namespace orvane {

/// A file that is whole under its final name or absent from it.
///
/// Bytes go to a temporary file in the same folder. `commit` flushes it to the disk, renames it over the final name and
/// flushes the folder. A file that is destroyed without a commit leaves nothing behind. After a failed write, flush or
/// close the temporary file is discarded and never tried again. Not for use by two threads at once.
class AtomicFile
{
public:
    /// Both are absolute paths in one folder; the temporary file is made anew, replacing a leftover.
    /// Throws FileError when it cannot be made.
    AtomicFile(QString finalPath, QString temporaryPath);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// Appends all of `bytes`; throws FileError on the first byte that cannot be written.
    void write(QByteArrayView bytes);

    /// Bytes written so far.
    qint64 size() const { return size_; }

    /// Makes the file appear under its final name, replacing what is there; throws FileError.
    void commit();

    /// Ends writing and removes the temporary file. A second call does nothing.
    void discard() noexcept;

private:
    void closeDescriptor();

    QString finalPath_;
    QString temporaryPath_;
    int descriptor_ = -1;
    qint64 size_ = 0;
};

/// The temporary sibling used where the product names none: "." + the file's name + ".new" in the same folder.
QString temporarySibling(const QString& finalPath);

/// Writes `bytes` whole to `finalPath` through `temporarySibling`; throws FileError.
void writeAtomically(const QString& finalPath, QByteArrayView bytes);

/// Flushes the finished file `stagedPath` to the disk, renames it over `finalPath` in the same file system and flushes
/// the folder; throws FileError, with the staged file removed.
void installStaged(const QString& stagedPath, const QString& finalPath);

} // namespace orvane
