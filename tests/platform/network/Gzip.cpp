#include "tests/platform/network/Gzip.h"

#include <zlib.h>

namespace orvane::test {

QByteArray gzip(const QByteArray& plain)
{
    z_stream stream = {};
    constexpr int gzipWindow = 16 + MAX_WBITS;
    constexpr int memoryLevel = 8;
    deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, gzipWindow, memoryLevel, Z_DEFAULT_STRATEGY);
    QByteArray packed(static_cast<qsizetype>(deflateBound(&stream, static_cast<uLong>(plain.size()))), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(plain.data()));
    stream.avail_in = static_cast<uInt>(plain.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.chop(static_cast<qsizetype>(stream.avail_out));
    deflateEnd(&stream);
    return packed;
}

} // namespace orvane::test
