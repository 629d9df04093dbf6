#pragma once

#include "platform/filesystem/Descriptor.h"
#include "platform/filesystem/FileError.h"

#include <QByteArrayView>
#include <QString>

namespace orvane {

/// Who may read a file that is made.
enum class FileAccess
{
    /// The access rights of the file that is replaced; for a new file what the user's mask allows.
    Usual,
    /// The user alone: 0600.
    OwnerOnly,
};

/// A file that is whole under its final name or absent from it.
///
/// Bytes go to a temporary file in the same folder. `commit` flushes it to the disk, renames it over the final name and
/// flushes the folder. A file that is destroyed without a commit leaves nothing behind. After a failed write, flush or
/// close the temporary file is discarded and never tried again. While it is written the temporary file is locked, so
/// that a second program at the same file is refused with EBUSY. Errors name the final file. A link at the final name
/// is replaced, and what it points to is left alone. Not for use by two threads at once.
class AtomicFile
{
public:
    /// Both are absolute paths in one folder; the temporary file is made anew, replacing a leftover.
    /// Throws FileError when it cannot be made, when a name holds a NUL (EINVAL) and when a folder has the final name
    /// (EISDIR).
    AtomicFile(QString finalPath, QString temporaryPath, FileAccess access = FileAccess::Usual);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// Appends all of `bytes`; throws FileError on the first byte that cannot be written.
    void write(QByteArrayView bytes);

    /// Bytes written so far.
    qint64 size() const { return size_; }

    /// Makes the file appear under its final name, replacing what is there; throws FileError. Where only the flush of
    /// the folder fails the new file stands, and the error says that it may not outlive a loss of power.
    void commit();

    /// Ends writing and removes the temporary file. A second call does nothing.
    void discard() noexcept;

private:
    void require(bool done);

    QString finalPath_;
    QByteArray finalName_;
    QByteArray temporaryName_;
    FileAccess access_;
    Descriptor descriptor_;
    /// A second handle of the same open file: it keeps the lock from the close to the rename.
    Descriptor lock_;
    qint64 size_ = 0;
};

/// The temporary sibling used where the product names none: "." + the file's name + ".new" in the same folder.
QString temporarySibling(const QString& finalPath);

/// Writes `bytes` whole to `finalPath` through `temporarySibling`; throws FileError.
void writeAtomically(const QString& finalPath, QByteArrayView bytes, FileAccess access = FileAccess::Usual);

/// Flushes the finished file `stagedPath` to the disk, renames it over `finalPath` in the same file system and flushes
/// the folder; throws FileError, with the staged file removed. A replaced file's access rights are kept.
void installStaged(const QString& stagedPath, const QString& finalPath);

} // namespace orvane
