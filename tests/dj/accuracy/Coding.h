#pragma once

#include <string>
#include <vector>

namespace orvane::test {

/// What is heard in songs that were written in some coding, beside what is heard in them as they are.
struct HeardCoding
{
    std::string name;
    int songs = 0;
    /// Of how many the tempo is the same within 0.1 % and 1 %, and within 1 % where half and double count too.
    int sameTempo = 0;
    int within1 = 0;
    int within1AnyOctave = 0;
    /// How far the tempi are apart at most, as a fraction.
    double farthest = 0.0;
    int sameKey = 0;
};

/// By how much, as a fraction of its score, the lag that is a song's tempo before any coding leads those of all other
/// tempi.
struct TempoLeads
{
    /// Before any coding, in the songs of which some coding changes the tempo by more than 1 %; in rising order.
    std::vector<double> changed;
    /// How far a coding moves the lead at most, in any song.
    double farthestMove = 0.0;
};

struct HeardCodings
{
    std::vector<HeardCoding> all;
    TempoLeads leads;
};

/// A song in each key, at a tempo of its own, written in each coding and listened to.
HeardCodings hearCodings();

} // namespace orvane::test
