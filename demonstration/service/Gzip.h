#pragma once

#include <QByteArray>

namespace orvane::demo {

/// `bytes` in the gzip format (RFC 1952).
QByteArray gzip(const QByteArray& bytes);

/// That many times 1,048,576 blanks in the gzip format, at less than a hundredth of the size. At most 4095.
QByteArray gzipOfBlanks(int mebibytes);

} // namespace orvane::demo
