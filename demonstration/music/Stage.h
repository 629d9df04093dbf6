#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace orvane::demo {

/// Sound being mixed: two channels of one length.
struct Stage
{
    explicit Stage(std::size_t length)
        : left(length)
        , right(length)
    {
    }

    std::size_t size() const { return left.size(); }

    /// Adds a recording from the sample `start` on, placed from -1 (left) to 1 (right); what reaches beyond the end is
    /// cut off.
    void add(std::span<const double> recording, std::size_t start, double gain, double place);
    /// Adds all of another stage of the same length.
    void add(const Stage& other, double gain);

    std::vector<double> left;
    std::vector<double> right;
};

} // namespace orvane::demo
