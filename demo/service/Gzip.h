#pragma once

#include <QByteArray>

namespace orvane::demo {

/// `bytes` in the gzip format (RFC 1952).
QByteArray gzip(const QByteArray& bytes);

/// `count` blanks in the gzip format, which are a thousandth of that.
QByteArray gzipOfBlanks(qint64 count);

} // namespace orvane::demo
