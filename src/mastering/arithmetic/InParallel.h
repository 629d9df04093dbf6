#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <system_error>
#include <thread>
#include <vector>

namespace orvane {

/// Processors of this machine, at least 1.
inline std::size_t processorCount()
{
    return std::max<std::size_t>(1, std::thread::hardware_concurrency());
}

/// Calls `job` with 0 to `jobs` - 1, each once, on at most `threads` threads, the caller's being one, and returns when
/// all are done. `job` does not throw. Where the system has no thread to give, the caller does the work.
template <typename Job>
void inParallel(std::size_t jobs, std::size_t threads, const Job& job)
{
    std::atomic<std::size_t> next{0};
    const auto work = [&] {
        for (std::size_t index = next++; index < jobs; index = next++)
            job(index);
    };
    std::vector<std::jthread> helpers;
    try {
        for (std::size_t helper = 1; helper < std::min(jobs, threads); ++helper)
            helpers.emplace_back(work);
    } catch (const std::system_error&) {
    }
    work();
}

} // namespace orvane
