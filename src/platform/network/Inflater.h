#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <memory>

namespace orvane {

/// Unpacks a gzip stream (RFC 1952) that comes in pieces of any size, and checks it to its last byte.
///
/// Throws HttpError: with the code Transport where the stream is damaged, is cut, fails its checksum or is followed by
/// something else; with TooLarge as soon as it would unpack to more than the limit. Several members one behind the
/// other are one stream, as the format says.
class Inflater
{
public:
    /// `limit` is the largest unpacked size, bytes.
    explicit Inflater(qint64 limit);
    ~Inflater();

    /// Takes the next packed bytes and appends what they unpack to.
    void feed(QByteArrayView packed, QByteArray& unpacked);

    /// No more will come. No byte at all is a stream that unpacks to nothing.
    void end() const;

private:
    struct Stream;
    std::unique_ptr<Stream> stream_;
    qint64 limit_;
    bool between_ = true;
};

} // namespace orvane
