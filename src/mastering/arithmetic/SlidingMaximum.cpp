#include "mastering/arithmetic/SlidingMaximum.h"

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

} // namespace orvane::Master
