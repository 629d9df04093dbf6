#pragma once

#include "platform/filesystem/Descriptor.h"

#include <QByteArray>
#include <QString>

#include <sys/types.h>

namespace orvane {

/// The system's form of `path`; throws FileError (EINVAL) for a path that holds a NUL, which would open a shorter name.
QByteArray systemName(const QString& path);

/// Makes the file `name` for writing, in place of a leftover of that name, and locks it. Links and pipes are replaced,
/// never opened. Not open, with errno set, on failure: EBUSY while another program holds the lock.
Descriptor makeStagingFile(const QByteArray& name, mode_t mode);

/// Removes the leftover `name`, unless another program holds its lock (EBUSY); false with errno set on failure.
bool removeStagingFile(const QByteArray& name);

/// Flushes the folder that `name` lies in; false with errno set. True where the file system knows no such flush.
bool flushFolderOf(const QByteArray& name);

} // namespace orvane
