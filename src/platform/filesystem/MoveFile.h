#pragma once

#include "platform/filesystem/FileError.h"

#include <QString>

namespace orvane {

/// Renames the file or folder at `from` to `to`, across file systems by a copy that is whole before the old one goes.
/// What lies at `to` is never replaced: FileError with EEXIST, also where nothing lies at `from`. A name that differs
/// in case only is no other file, also where the file system ignores case. Errors name `from`.
void moveWithoutReplacing(const QString& from, const QString& to);

/// Copies the file or folder at `from` to `to`, links as links; `to` appears only when it is whole. What lies at `to`
/// is never replaced: FileError with EEXIST. A folder is not copied into itself (EINVAL). Errors name `from`.
void copyWithoutReplacing(const QString& from, const QString& to);

} // namespace orvane
