#pragma once

#include "demonstration/music/Song.h"

#include <QByteArray>

namespace orvane::demo {

/// The song as an MP3 of 192 kbit/s with a LAME header; the same song gives the same bytes.
QByteArray record(const Song& song);

} // namespace orvane::demo
