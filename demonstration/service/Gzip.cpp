#include "demonstration/service/Gzip.h"

#include <zlib.h>

namespace orvane::demo {
namespace {

/// 15 bits of window; below zero without a frame, with 16 added in the frame of gzip.
enum class Frame
{
    none = -15,
    gzip = 15 + 16
};

/// A packed stream being written.
class Packer
{
public:
    explicit Packer(Frame frame)
    {
        deflateInit2(&stream_, Z_BEST_SPEED, Z_DEFLATED, static_cast<int>(frame), 8, Z_DEFAULT_STRATEGY);
    }

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
    z_stream stream_{};
    QByteArray packed_;
};

QByteArray littleEndian(quint32 number)
{
    QByteArray bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes.append(static_cast<char>(number >> shift & 0xFF));
    return bytes;
}

uLong checksumOf(const QByteArray& bytes)
{
    return crc32(0, reinterpret_cast<const Bytef*>(bytes.constData()), static_cast<uInt>(bytes.size()));
}

} // namespace

QByteArray gzip(const QByteArray& bytes)
{
    Packer packer(Frame::gzip);
    packer.add(bytes, Z_FINISH);
    return packer.take();
}

QByteArray gzipOfBlanks(int mebibytes)
{
    // After a full flush a block stands on its own: packed once, it can be said any number of times.
    const QByteArray block(1024 * 1024, ' ');
    Packer packer(Frame::none);
    packer.add(block, Z_FULL_FLUSH);
    const QByteArray packedBlock = packer.take();

    static constexpr char header[] = "\x1f\x8b\x08\0\0\0\0\0\0\xff";
    static constexpr char lastBlock[] = "\x03\0";
    const uLong ofBlock = checksumOf(block);
    uLong checksum = 0;
    for (int number = 0; number < mebibytes; ++number)
        checksum = crc32_combine(checksum, ofBlock, static_cast<z_off_t>(block.size()));
    return QByteArray(header, 10) + packedBlock.repeated(mebibytes) + QByteArray(lastBlock, 2) +
           littleEndian(static_cast<quint32>(checksum)) +
           littleEndian(static_cast<quint32>(qint64(mebibytes) * block.size()));
}

} // namespace orvane::demo
