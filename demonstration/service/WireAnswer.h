#pragma once

#include "demonstration/service/Fault.h"
#include "demonstration/service/HttpMessage.h"

#include <QByteArray>

#include <chrono>
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

    /// Head and body, or all of the head where the body is streamed.
    QByteArray bytes;
    /// Sent behind the bytes as the connection takes it.
    std::optional<StreamedBody> streamed;
    /// Time from one byte of the streamed body to the next; as fast as it goes when absent.
    std::optional<std::chrono::milliseconds> pace;
    End end = End::keepAlive;
    /// Status in the head; 0 where there is none.
    int status = 0;
};

/// Whether the answer to a request with this fault carries anything of the response's body.
bool needsBody(Fault::Kind kind);

/// The answer as it should be.
WireAnswer wellAnswered(const Request& request, const Response& response);

/// The answer with a fault in it. Chunked and packed bodies are held in memory, all others are read as they are sent.
WireAnswer badlyAnswered(const Request& request, const Response& response, const Fault& fault);

} // namespace orvane::demo
