#include "benchmarks/Lateness.h"

#include <algorithm>

namespace orvane::bench {

Lateness::Lateness()
{
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, [this] {
        late_.push_back(static_cast<double>(watch_.nsecsElapsed()) / 1e6 - 1.0);
        watch_.restart();
    });
    watch_.start();
    timer_.start(1);
}

double Lateness::percentile99() const
{
    std::vector<double> sorted = late_;
    std::ranges::sort(sorted);
    return sorted.empty() ? 0 : sorted[sorted.size() * 99 / 100];
}

double Lateness::worst() const
{
    return late_.empty() ? 0 : *std::ranges::max_element(late_);
}

} // namespace orvane::bench
