#include "platform/network/Inflater.h"

#include "platform/network/HttpClient.h"

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <zlib.h>

namespace orvane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The largest window, with a gzip head and tail around the stream.
constexpr int gzipWindow = 16 + MAX_WBITS;

} // namespace

struct Inflater::Stream : z_stream
{
    Stream()
        : z_stream{}
    {
        if (inflateInit2(this, gzipWindow) != Z_OK)
            throw std::bad_alloc();
    }

    ~Stream() { inflateEnd(this); }

    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    std::array<char, std::size_t{64} * 1024> unpacked;
};

Inflater::Inflater(qint64 limit)
    : stream_(std::make_unique<Stream>())
    , limit_(limit)
{
}

Inflater::~Inflater() = default;

void Inflater::feed(QByteArrayView packed, QByteArray& unpacked)
{
    Stream& stream = *stream_;
    // zlib takes its input as not const and leaves it alone.
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    stream.avail_in = static_cast<uInt>(packed.size());
    do {
        if (between_ && stream.avail_in > 0) {
            inflateReset(&stream);
            between_ = false;
        }
        stream.next_out = reinterpret_cast<Bytef*>(stream.unpacked.data());
        stream.avail_out = static_cast<uInt>(stream.unpacked.size());
        const int result = inflate(&stream, Z_NO_FLUSH);
        if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR)
            throw HttpError(HttpError::Code::Transport, u"the compressed answer is damaged"_s);
        between_ = result == Z_STREAM_END;
        const qsizetype produced = static_cast<qsizetype>(stream.unpacked.size() - stream.avail_out);
        if (unpacked.size() + produced > limit_)
            throw HttpError(HttpError::Code::TooLarge, u"the answer is larger than %1 bytes"_s.arg(limit_));
        unpacked.append(stream.unpacked.data(), produced);
    } while (stream.avail_in > 0 || stream.avail_out == 0);
}

void Inflater::end() const
{
    if (!between_)
        throw HttpError(HttpError::Code::Transport, u"truncated transfer (the compressed answer is cut)"_s);
}

} // namespace orvane
