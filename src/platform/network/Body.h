#pragma once

#include "platform/network/HttpClient.h"
#include "platform/network/ResponseParser.h"

#include <QByteArrayView>
#include <QString>

#include <memory>

namespace orvane {

/// Where the body of the final answer goes. Everything but `abandon` throws HttpError.
class Body
{
public:
    virtual ~Body() = default;

    /// The coding to ask the server for.
    virtual QByteArray acceptedCoding() const = 0;
    /// The head of the final answer. Returns whether the body is wanted.
    virtual bool begin(const ResponseHead& head) = 0;
    virtual void write(QByteArrayView bytes) = 0;
    /// All that is wanted of the body has come: puts body, size and announcement into `response`.
    virtual void finish(HttpResponse& response) = 0;
    /// Nothing of this answer is to stay behind.
    virtual void abandon() noexcept = 0;
};

/// Collects the body, unpacked, up to `limit` bytes.
std::unique_ptr<Body> makeMemoryBody(qint64 limit);

/// Writes the body of a 200 to `path` as it comes; behind any other ending no file is there. Anything there is
/// overwritten if it is an ordinary file and left alone, with an error, if it is anything else.
std::unique_ptr<Body> makeFileBody(QString path);

} // namespace orvane
