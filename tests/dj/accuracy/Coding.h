#pragma once

#include <string>
#include <vector>

namespace orvane::test {

/// What is heard in songs that were written in some coding, beside what is heard in them as they are.
struct HeardCoding
{
    std::string name;
    int songs = 0;
    /// Of how many tempo (within 0.1 %) and key are the same.
    int sameTempo = 0;
    int sameKey = 0;
};

/// A song in each key, at a tempo of its own, written in each coding and listened to.
std::vector<HeardCoding> hearCodings();

} // namespace orvane::test
