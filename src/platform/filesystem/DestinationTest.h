#pragma once

#include "platform/filesystem/FileError.h"

#include <QString>

namespace orvane {

/// Proves that files can be written in `folder`, an absolute path: makes it with the folders above it, writes the empty
/// file ".orvane-write-test" in it and removes that again, where a refusal is ignored. Throws FileError that names the
/// folder.
void destinationWriteTest(const QString& folder);

} // namespace orvane
