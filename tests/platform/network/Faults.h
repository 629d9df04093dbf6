#pragma once

#include "platform/network/HttpClient.h"
#include "tests/support/ScriptedServer.h"

#include <QList>

#include <chrono>
#include <optional>
#include <ostream>
#include <string>

namespace orvane::test {

/// How a request is to end: with an answer of this status, or with an error of this code.
struct Ending
{
    int status = 0;
    std::optional<HttpError::Code> code;

    bool operator==(const Ending&) const = default;
};

/// One thing that a server can do wrong.
struct NetworkFault
{
    std::string name;
    Script script;
    Ending data;
    Ending download;
    /// What the sentence holds, where that matters.
    QByteArray words;
    /// Short for the faults that consist in waiting, and otherwise so long that it plays no part.
    std::chrono::milliseconds timeout{60'000};
    std::chrono::milliseconds stallWindow{60'000};
};

inline void PrintTo(const NetworkFault& fault, std::ostream* out)
{
    *out << fault.name;
}

/// Limits under which a body that is too large is a small one, and with this stall window.
HttpClient::Limits smallLimits(std::chrono::milliseconds stallWindow = std::chrono::minutes(1));

const QList<NetworkFault>& networkFaults();

} // namespace orvane::test
