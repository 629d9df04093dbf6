#pragma once

#include <QStringList>

namespace orvane::Master {

/// Names of the platforms and standards that a track can be mastered for, in their order. A master's file name carries
/// one of them in brackets.
const QStringList& platformNames();

} // namespace orvane::Master
