#pragma once

#include "demo/service/Fault.h"
#include "demo/service/HttpMessage.h"

#include <QByteArray>

#include <optional>

namespace orvane::demo {

/// What really goes over the wire: bytes, what follows them, and how the connection ends.
struct WireAnswer
{
    enum class End
    {
        keepAlive,
        close,
        reset,
        holdOpen
    };

    /// Head and body, or all of the head where the body is streamed or dribbled.
    QByteArray bytes;
    /// Sent behind the bytes as the connection takes it.
    std::optional<StreamedBody> streamed;
    /// Sent behind the bytes, one byte a second.
    QByteArray dribbled;
    End end = End::keepAlive;
    /// Status in the head; 0 where there is none.
    int status = 0;
};

/// The answer as it should be.
WireAnswer wellAnswered(const Request& request, const Response& response);

/// The answer with a fault in it.
WireAnswer badlyAnswered(const Request& request, const Response& response, const Fault& fault);

} // namespace orvane::demo
