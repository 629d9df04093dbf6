#pragma once

#include <QByteArray>

namespace orvane::test {

/// `plain` as one gzip member, made by zlib.
QByteArray gzip(const QByteArray& plain);

} // namespace orvane::test
