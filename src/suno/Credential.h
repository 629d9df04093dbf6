#pragma once

#include "platform/network/HttpClient.h"

#include <QString>

#include <optional>

namespace orvane {

/// The header that carries a token or a pasted cookie line, trimmed of blanks, quotes, newlines and tabs. Absent where
/// nothing remains, and where a control character would end the header early.
std::optional<HttpHeader> credentialHeader(const QString& value);

} // namespace orvane
