#pragma once

#include <cstddef>
#include <vector>

namespace orvane::Master {

/// The largest of the values in a window that slides over a signal, in constant time a value on average and memory for
/// one window.
class SlidingMaximum
{
public:
    /// `length` of the window in values, at least 1.
    explicit SlidingMaximum(std::size_t length);

    /// Takes the value at `index`; indices ascend, and those left out count as no value.
    void add(std::size_t index, double value);

    /// Lets go of what lies in front of `index`.
    void advanceTo(std::size_t index);

    bool isEmpty() const { return count_ == 0; }

    /// The largest value held, and its index; there is one.
    double largest() const { return at(0).value; }

    std::size_t largestIndex() const { return at(0).index; }

private:
    struct Entry
    {
        std::size_t index;
        double value;
    };

    std::size_t wrapped(std::size_t place) const { return place < ring_.size() ? place : place - ring_.size(); }

    const Entry& at(std::size_t place) const { return ring_[wrapped(first_ + place)]; }

    /// Values that fall from front to back: whoever has a larger one behind him will never be the largest.
    std::vector<Entry> ring_;
    std::size_t first_ = 0;
    std::size_t count_ = 0;
};

} // namespace orvane::Master
