#pragma once

#include "dj/arithmetic/Key.h"
#include "tests/dj/KnownTrack.h"

#include <string>
#include <vector>

namespace orvane::test {

/// What was made of one track of known beats.
struct HeardBeat
{
    KnownBeat truth;
    /// What the track is an example of: "straight", "swung" and so on.
    std::string kind;
    double bpm = 0.0;
    /// The distances of the known beats to the grid's nearest lines, in ms: positive where the grid is late.
    std::vector<double> errors;
};

/// Every kit, tempo and kind, listened to.
std::vector<HeardBeat> hearKits();

/// What was made of one track of a known key.
struct HeardKey
{
    DJ::Key truth;
    bool hasDrums = false;
    DJ::Key heard;
};

/// Every loop of chords in every key, without drums and with them, listened to.
std::vector<HeardKey> hearChords();

/// What a heard key counts for: 1 for the same, 0.5 for a fifth up or down, 0.3 for the relative, 0.2 for the parallel.
double scoreOf(const DJ::Key& heard, const DJ::Key& truth);

/// By how much the heard tempo is off, as a fraction of the truth.
double errorOf(double heard, double truth);

/// As `errorOf`, where half and double the tempo are as good as the tempo.
double errorWithoutOctave(double heard, double truth);

} // namespace orvane::test
