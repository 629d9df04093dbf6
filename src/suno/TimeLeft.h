#pragma once

#include <QString>

#include <array>
#include <chrono>
#include <cstddef>
#include <deque>
#include <optional>

namespace orvane {

/// How long a batch will still take, from the measured rate of each kind of work in it: a track that lies on disk
/// already takes moments, a new one takes a transfer, and a resumed batch has first many of one and then of the other.
class TimeLeft
{
public:
    enum class Work
    {
        download,
        skip
    };

    /// How many items of each kind the batch holds.
    TimeLeft(int downloads, int skips);

    /// Notes that one item is done and how long it took.
    void done(Work work, std::chrono::milliseconds took);

    /// Absent until enough is known to say anything true: before the third item, and while downloads remain and fewer
    /// than three have been measured. Zero when nothing remains.
    std::optional<std::chrono::milliseconds> remaining() const;

private:
    struct Rate
    {
        int left = 0;
        int measured = 0;
        /// The latest durations, so that the estimate follows a connection that slows down.
        std::deque<std::chrono::milliseconds> latest;

        std::chrono::milliseconds forTheRest() const;
    };

    Rate& rate(Work work) { return rates_[static_cast<std::size_t>(work)]; }

    const Rate& rate(Work work) const { return rates_[static_cast<std::size_t>(work)]; }

    std::array<Rate, 2> rates_;
};

/// The duration in words, such as "about 4 min left", rounded to what such an estimate is worth.
QString timeLeftText(std::chrono::milliseconds remaining);

} // namespace orvane
