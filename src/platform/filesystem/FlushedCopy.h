#pragma once

#include <QByteArray>

namespace orvane {

/// Copies the file, link or folder at `from` to the free name `to` and flushes it to the disk; a folder with all that
/// is in it, a link as a link, rights included. False with errno set on the first refusal: EINVAL for a pipe or a
/// device, which is not opened, EEXIST where the name is taken. What was copied until then stays.
bool copyAndFlush(const QByteArray& from, const QByteArray& to);

} // namespace orvane
