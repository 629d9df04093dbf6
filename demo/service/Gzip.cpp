#include "demo/service/Gzip.h"

#include <zlib.h>

namespace orvane::demo {
namespace {

/// A gzip stream being written.
class Packer
{
public:
    Packer() { deflateInit2(&stream_, Z_BEST_SPEED, Z_DEFLATED, gzipWindow, 8, Z_DEFAULT_STRATEGY); }

    ~Packer() { deflateEnd(&stream_); }

    Packer(const Packer&) = delete;
    Packer& operator=(const Packer&) = delete;

    void add(const QByteArray& bytes, int flush)
    {
        QByteArray block(256 * 1024, Qt::Uninitialized);
        stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.constData()));
        stream_.avail_in = static_cast<uInt>(bytes.size());
        do {
            stream_.next_out = reinterpret_cast<Bytef*>(block.data());
            stream_.avail_out = static_cast<uInt>(block.size());
            deflate(&stream_, flush);
            packed_.append(block.constData(), block.size() - static_cast<qsizetype>(stream_.avail_out));
        } while (stream_.avail_out == 0);
    }

    QByteArray take() { return std::move(packed_); }

private:
    /// 15 bits of window, and 16 for the gzip frame.
    static constexpr int gzipWindow = 15 + 16;

    z_stream stream_{};
    QByteArray packed_;
};

} // namespace

QByteArray gzip(const QByteArray& bytes)
{
    Packer packer;
    packer.add(bytes, Z_FINISH);
    return packer.take();
}

QByteArray gzipOfBlanks(qint64 count)
{
    const QByteArray block(1024 * 1024, ' ');
    Packer packer;
    for (qint64 done = 0; done < count; done += block.size())
        packer.add(block, Z_NO_FLUSH);
    packer.add({}, Z_FINISH);
    return packer.take();
}

} // namespace orvane::demo
