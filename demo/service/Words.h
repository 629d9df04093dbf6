#pragma once

#include <QString>

namespace orvane::demo {

/// Titles and lyrics made of small words: the same seed gives the same text.

QString titleOf(unsigned seed);
/// Style tags, as a musician would type them.
QString tagsOf(unsigned seed);
/// Verses and a chorus under their section marks.
QString lyricsOf(unsigned seed);

} // namespace orvane::demo
