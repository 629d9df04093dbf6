#include "mastering/arithmetic/SlidingMaximum.h"

#include <algorithm>

namespace orvane::Master {

SlidingMaximum::SlidingMaximum(std::size_t length)
    : ring_(length)
{
}

void SlidingMaximum::add(std::size_t index, double value)
{
    while (count_ > 0 && at(count_ - 1).value <= value)
        --count_;
    ring_[wrapped(first_ + count_)] = {.index = index, .value = value};
    ++count_;
}

void SlidingMaximum::advanceTo(std::size_t index)
{
    while (count_ > 0 && at(0).index < index) {
        first_ = wrapped(first_ + 1);
        --count_;
    }
}

std::vector<double> slidingMaximum(std::span<const double> values, std::size_t length)
{
    SlidingMaximum window(length);
    std::vector<double> largest(values.size());
    std::size_t added = 0;
    for (std::size_t index = 0; index < values.size(); ++index) {
        window.advanceTo(index);
        for (; added < std::min(index + length, values.size()); ++added)
            window.add(added, values[added]);
        largest[index] = window.largest();
    }
    return largest;
}

} // namespace orvane::Master
