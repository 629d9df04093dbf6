#include "benchmarks/Lateness.h"

#include <algorithm>
#include <ctime>

namespace orvane::bench {

namespace {

/// Milliseconds of processor that this thread has used so far.
double usedByThisThread()
{
    timespec used = {};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) * 1e3 + static_cast<double>(used.tv_nsec) / 1e6;
}

} // namespace

Lateness::Lateness()
{
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, [this] {
        late_.push_back(static_cast<double>(watch_.nsecsElapsed()) / 1e6 - 1.0);
        watch_.restart();
        const double used = usedByThisThread();
        longestTurn_ = std::max(longestTurn_, used - usedBefore_);
        usedBefore_ = used;
    });
    usedBefore_ = usedByThisThread();
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
