#pragma once

#include "dj/arithmetic/Blend.h"
#include "dj/arithmetic/Cuts.h"
#include "mastering/arithmetic/Channels.h"

#include <cstddef>
#include <cstdint>
#include <functional>

namespace orvane::DJ {

/// Frames of a mix, as part of `channels`: from the frame `first` up to `end`, which is not among them.
struct Piece
{
    Channels& channels;
    std::size_t first = 0;
    std::size_t end = 0;
    /// Where in the mix the first one is.
    std::int64_t position = 0;
};

/// Puts tracks together into one sound, which goes out piece by piece: all that is kept is the tail of the track that
/// came last, which is blended into the next one's head.
class Splice
{
public:
    struct Settings
    {
        Cuts cuts;
        Bass bass = Bass::Swapped;
        /// Whether the very start and the very end are faded.
        bool fadesEdges = true;

        bool operator==(const Settings&) const = default;
    };

    /// `take` is given the mix's pieces in order, of at least one frame each, and may change them.
    Splice(const Settings& settings, std::function<void(const Piece&)> take);

    /// Puts in the next track: two channels of the mix's rate. What has no channels is passed over.
    void add(Channels track);

    /// Gives out what is left. Called once, last.
    void finish();

    /// Frames given out so far.
    std::int64_t written() const { return written_; }

private:
    std::int64_t blended(std::int64_t length) const;
    void give(Channels& channels, std::int64_t first, std::int64_t end);
    void giveAway(Channels& track, std::int64_t first, std::int64_t end);

    Settings settings_;
    std::function<void(const Piece&)> take_;
    Channels tail_;
    std::int64_t written_ = 0;
};

} // namespace orvane::DJ
