#pragma once

#include "dj/Analysis.h"

#include <QJsonArray>
#include <QStringList>

namespace orvane::lab {

/// How many files a verb takes that takes any number.
inline constexpr qsizetype mostFiles = 100'000;

/// The files at these paths, each listened to, in the order given; on as many threads as there are processors. Throws
/// what the first of them that cannot be read throws.
DJ::Set analysed(const QStringList& paths);

/// One object for each track.
QJsonArray toJson(const DJ::Set& set);

} // namespace orvane::lab
