#pragma once

#include <QString>

#include <optional>
#include <sys/types.h>

namespace orvane {

/// Why the program will not run for that user, in one sentence; absent where it will. The web engine's sandbox, which
/// keeps web pages away from the user's files, does not exist for root.
std::optional<QString> refusalFor(uid_t user);

} // namespace orvane
