#pragma once

#include <QString>

namespace orvane::demo {

/// Titles, tags and lyrics made of small words: the same numbers give the same text, all of it in ASCII.

/// Title of the track with this number in the library of a seed. The first 55,296 of a library are all different; after
/// that they are told apart by a number of their own.
QString titleOf(unsigned seed, int ordinal);

/// Style tags, as a musician would type them.
QString tagsOf(unsigned seed);

/// Two verses and a chorus, which comes twice, and an ending, under their section marks. The lines rhyme in pairs.
QString lyricsOf(unsigned seed);

} // namespace orvane::demo
